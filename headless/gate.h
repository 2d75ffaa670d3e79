// The one gate that every call out of a module goes through: it counts the calls, can refuse any
// one of them and can have something done in the middle of one, so that a failure of the host, and
// a command of the host's from within a call, can be tried at every place they can happen.
//
//   host.gate().onNth(3, [&](CallKind, const char*) { host.flatten(effect); });
//   host.doDialog(effect);  // its third call of the host finds the instance saved
#pragma once

#include <array>
#include <cstdint>
#include <functional>
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

  // What is done inside a call of the module before the host serves it: any command of any instance
  // (Host::takesCommands says which), or whatever else a host may do meanwhile. `name` is that of
  // the callback or suite function; of an acquisition the suite's name in quotes and its version.
  using Visit = std::function<void(CallKind kind, const char* name)>;

  // Visits every call of that name from now on, "" for every call. While a visit runs, the calls
  // that its own commands make are counted but not visited. One visit is kept; an empty one ends
  // it.
  void onCall(std::string name, Visit visit);
  // Visits the n-th call from now on (1 is the next) and no other; n counts as in refuseNth.
  void onNth(uint64_t n, Visit visit);
  // How many calls were visited so far.
  uint64_t visits() const { return visits_; }

  // How many calls were refused so far, and the last of them as "kind: name".
  uint64_t refusals() const { return refusals_; }
  const std::string& lastRefused() const { return lastRefused_; }

 private:
  void visit(CallKind kind, const char* name);

  uint64_t count_ = 0;
  std::array<uint64_t, kCallKinds> counts_{};
  uint64_t refuseAt_ = 0;  // value of count_, 0 for none
  std::array<uint64_t, kCallKinds> refuseAtKind_{};
  uint64_t refusals_ = 0;
  std::string lastRefused_;
  Visit visit_;
  std::string visitName_;  // "" for every call
  uint64_t visitAt_ = 0;   // value of count_, 0 for every one
  uint64_t visits_ = 0;
  bool visiting_ = false;
};

}  // namespace vellumtide::headless
