#include "headless/gate.h"

#include <utility>

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
  const bool refused = count_ == refuseAt_ || counts_[k] == refuseAtKind_[k];
  visit(kind, name);
  if (!refused) return true;
  ++refusals_;
  lastRefused_ = std::string(callKindName(kind)) + ": " + name;
  return false;
}

void Gate::visit(CallKind kind, const char* name) {
  if (!visit_ || visiting_) return;
  if (visitAt_ ? count_ != visitAt_ : !visitName_.empty() && visitName_ != name) return;
  struct Flag {
    bool& flag;
    explicit Flag(bool& f) : flag(f) { flag = true; }
    ~Flag() { flag = false; }
  } const visiting(visiting_);
  ++visits_;
  // A visit may set another one.
  const Visit once = visit_;
  once(kind, name);
}

void Gate::onCall(std::string name, Visit visit) {
  visit_ = std::move(visit);
  visitName_ = std::move(name);
  visitAt_ = 0;
}

void Gate::onNth(uint64_t n, Visit visit) {
  onCall("", n == 0 ? Visit() : std::move(visit));
  visitAt_ = count_ + n;
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
