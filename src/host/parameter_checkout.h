#pragma once

#include <deque>

#include "aeapi/effect_data.h"

namespace vellumtide {

// Holds controls that were checked out at the current time and checks every one of them back in
// when it goes.
class ParameterCheckout {
 public:
  explicit ParameterCheckout(PF_InData* in_data) : in_data_(in_data) {}
  ~ParameterCheckout();
  ParameterCheckout(const ParameterCheckout&) = delete;
  ParameterCheckout& operator=(const ParameterCheckout&) = delete;

  // Throws the host's error. The definition stays valid as long as the holder.
  const PF_ParamDef& checkout(PF_ParamIndex index);

  const PF_InData& inData() const { return *in_data_; }

 private:
  PF_InData* in_data_;
  std::deque<PF_ParamDef> held_;
};

}  // namespace vellumtide
