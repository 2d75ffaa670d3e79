// The host's reference to the effect instance that a command is for, given back at the end.
#pragma once

#include "core/suite_handler.h"

namespace vellumtide::AEO {

class Effect {
 public:
  explicit Effect(PF_InData* in_data);
  ~Effect();
  Effect(const Effect&) = delete;
  Effect& operator=(const Effect&) = delete;

  // Non-zero when the host refused the reference; there is none then.
  PF_Err error() const { return error_; }
  AEGP_EffectRefH ref() const { return effect_; }
  SPBasicSuite* basic() const { return basic_; }

 private:
  SPBasicSuite* basic_;
  ScopedSuite<AEGP_EffectSuite3> suite_;
  AEGP_EffectRefH effect_ = nullptr;
  PF_Err error_;
};

}  // namespace vellumtide::AEO
