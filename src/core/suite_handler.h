// Access to the host's suites. A suite type T of aeapi/suites.h carries its name and version.
#pragma once

#include <array>
#include <cstddef>

#include "aeapi/constants.h"
#include "aeapi/effect_data.h"
#include "aeapi/suites.h"

namespace vellumtide {

// Acquires suites on demand, each once, and releases them all when destroyed.
class SuiteHandler {
 public:
  explicit SuiteHandler(SPBasicSuite* basic) : basic_(basic) {}
  ~SuiteHandler();
  SuiteHandler(const SuiteHandler&) = delete;
  SuiteHandler& operator=(const SuiteHandler&) = delete;

  // Throws the host's error (PF_Err) when the suite cannot be had.
  template <class Suite>
  const Suite& get() {
    return *static_cast<const Suite*>(acquire(Suite::kName, Suite::kVersion));
  }

  SPBasicSuite* basic() const { return basic_; }

 private:
  struct Entry {
    const char* name;
    int32_t version;
    const void* table;
  };

  const void* acquire(const char* name, int32_t version);

  SPBasicSuite* basic_;
  std::array<Entry, 24> entries_;
  std::size_t count_ = 0;
};

// One suite for the span of one call. `error()` is 0 when the suite was had; otherwise the object
// converts to false and must not be dereferenced.
template <class Suite>
class ScopedSuite {
 public:
  explicit ScopedSuite(SPBasicSuite* basic) : basic_(basic) {
    if (!basic_) {
      error_ = PF_Err_INVALID_CALLBACK;
      return;
    }
    const void* table = nullptr;
    error_ = basic_->AcquireSuite(Suite::kName, Suite::kVersion, &table);
    if (!error_ && !table) error_ = PF_Err_INVALID_CALLBACK;
    if (!error_) suite_ = static_cast<const Suite*>(table);
  }
  ~ScopedSuite() {
    if (suite_) basic_->ReleaseSuite(Suite::kName, Suite::kVersion);
  }
  ScopedSuite(const ScopedSuite&) = delete;
  ScopedSuite& operator=(const ScopedSuite&) = delete;

  explicit operator bool() const { return suite_ != nullptr; }
  const Suite* operator->() const { return suite_; }
  PF_Err error() const { return error_; }

 private:
  SPBasicSuite* basic_;
  const Suite* suite_ = nullptr;
  PF_Err error_ = PF_Err_NONE;
};

}  // namespace vellumtide
