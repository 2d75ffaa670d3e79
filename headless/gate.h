// The one gate that every call out of a module goes through: it counts the calls and can refuse any
// one of them, so that a failure of the host can be tried at every place it can happen.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace vellumtide::headless {

enum class CallKind {
  kAllocation,    // a handle, a memory handle, a block, a resize, a lock
  kSuiteAcquire,  // SPBasicSuite.AcquireSuite
  kSuiteCall,     // a function of a suite
  kCallback,      // an interact, utility or smart render callback
};

constexpr int kCallKinds = 4;
const char* callKindName(CallKind kind);

class Gate {
 public:
  // Counts one call of `name`. False: the call is to be refused. A call that gives something back
  // does its work all the same and only answers with the error, so that the books stay right.
  bool pass(CallKind kind, const char* name);

  // Calls counted so far, all together or of one kind.
  uint64_t count() const { return count_; }
  uint64_t count(CallKind kind) const { return counts_[static_cast<int>(kind)]; }

  // Refuses the n-th call from now on (1 is the next); 0 refuses none. Only that one is refused.
  void refuseNth(uint64_t n);
  // The same, counting calls of one kind only.
  void refuseNth(CallKind kind, uint64_t n);

  // How many calls were refused so far, and the last of them as "kind: name".
  uint64_t refusals() const { return refusals_; }
  const std::string& lastRefused() const { return lastRefused_; }

 private:
  uint64_t count_ = 0;
  std::array<uint64_t, kCallKinds> counts_{};
  uint64_t refuseAt_ = 0;  // value of count_, 0 for none
  std::array<uint64_t, kCallKinds> refuseAtKind_{};
  uint64_t refusals_ = 0;
  std::string lastRefused_;
};

}  // namespace vellumtide::headless
