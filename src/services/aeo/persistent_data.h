#pragma once

#include <string>

#include "core/suite_handler.h"

namespace vellumtide::AEO {

// The host's settings, shared by all projects of a user. Once the host has refused anything, later
// reads are skipped and give empty texts.
class PersistentData {
 public:
  explicit PersistentData(SPBasicSuite* basic);

  PF_Err error() const { return error_; }

  // Empty for a missing key.
  std::string getString(const char* section, const char* key);

 private:
  ScopedSuite<AEGP_PersistentDataSuite3> suite_;
  AEGP_PersistentBlobH blob_ = nullptr;
  PF_Err error_;
};

}  // namespace vellumtide::AEO
