#include "headless/gate.h"

namespace vellumtide::headless {

const char* callKindName(CallKind kind) {
  switch (kind) {
    case CallKind::kAllocation:
      return "allocation";
    case CallKind::kSuiteAcquire:
      return "suite acquisition";
    case CallKind::kSuiteCall:
      return "suite call";
    case CallKind::kCallback:
      return "callback";
  }
  return "call";
}

bool Gate::pass(CallKind kind, const char* name) {
  const int k = static_cast<int>(kind);
  ++count_;
  ++counts_[k];
  if (count_ != refuseAt_ && counts_[k] != refuseAtKind_[k]) return true;
  ++refusals_;
  lastRefused_ = std::string(callKindName(kind)) + ": " + name;
  return false;
}

void Gate::refuseNth(uint64_t n) {
  refuseAt_ = n == 0 ? 0 : count_ + n;
  refuseAtKind_ = {};
}

void Gate::refuseNth(CallKind kind, uint64_t n) {
  const int k = static_cast<int>(kind);
  refuseAt_ = 0;
  refuseAtKind_ = {};
  refuseAtKind_[k] = n == 0 ? 0 : counts_[k] + n;
}

}  // namespace vellumtide::headless
