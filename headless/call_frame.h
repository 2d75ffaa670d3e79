// One call into a module, on the stack of that call: which host, instance and command its callbacks
// belong to, and what it has checked out. Internal to this folder.
#pragma once

#include <deque>
#include <exception>
#include <map>
#include <string>
#include <utility>

#include "headless/host.h"
#include "headless/host_state.h"

namespace vellumtide::headless {

class CallFrame {
 public:
  CallFrame(Host& host, Effect* effect, PF_Cmd command, const RenderOptions* options);
  ~CallFrame();  // reports what the command should have given back
  CallFrame(const CallFrame&) = delete;
  CallFrame& operator=(const CallFrame&) = delete;

  // The innermost call of this thread, null outside a command.
  static CallFrame* current();
  // The call that this one came from within, null for the outermost.
  CallFrame* outer() const { return previous_; }
  bool isOutermost() const { return previous_ == nullptr; }
  Host& host() { return host_; }
  HostState& state() { return host_.state(); }
  Books& books() { return host_.books(); }
  Effect* effect() const { return effect_; }
  PF_Cmd command() const { return command_; }
  const RenderOptions& options() const { return *options_; }

  // The instance that an effect_ref stands for. Null, and a fault, for any other reference; null
  // without a fault for the reference of calls without an instance.
  Effect* effectOf(PF_ProgPtr reference, const char* caller);
  // The layer a reference stands for, null and a fault when there is none.
  Layer* layerOf(AEGP_LayerH reference, const char* caller);

  // The out-data of the call while it runs, and the sequence data that the host put there last.
  PF_OutData* out = nullptr;
  PF_Handle given = nullptr;

  std::map<A_long, PF_ParamIndex> paramsOut;  // checked-out parameters by their serial number
  std::deque<std::string> texts;              // that checked-out parameters point to

 private:
  Host& host_;
  Effect* effect_;
  PF_Cmd command_;
  const RenderOptions* options_;
  CallFrame* previous_;
  std::string outerCommand_;
  std::map<std::pair<std::string, int32_t>, int64_t> suitesBefore_;
};

PF_ProgPtr referenceOf(Effect& effect);
PF_ProgPtr referenceOf(Host& host);

// Reports a call that came while no command was running; the host called last takes it.
void reportStrayCall(const char* name);
void forgetLastHost(const Host& host);

constexpr PF_Err kRefused = PF_Err_OUT_OF_MEMORY;

// Serves one call of a module: counts it at the gate, runs `body` with the current frame and lets
// no exception out.
template <typename Body>
PF_Err serve(CallKind kind, const char* name, Body&& body) {
  CallFrame* frame = CallFrame::current();
  if (!frame) {
    reportStrayCall(name);
    return PF_Err_INVALID_CALLBACK;
  }
  try {
    return frame->host().gate().pass(kind, name) ? body(*frame) : kRefused;
  } catch (const std::exception& error) {
    frame->books().fault(std::string(name) + " failed in the host: " + error.what());
    return PF_Err_OUT_OF_MEMORY;
  }
}

// The same for calls that give something back: a refused one does its work and answers the error.
template <typename Body>
PF_Err serveGiveBack(CallKind kind, const char* name, Body&& body) {
  CallFrame* frame = CallFrame::current();
  if (!frame) {
    reportStrayCall(name);
    return PF_Err_INVALID_CALLBACK;
  }
  bool passed = false;
  serve(kind, name, [&passed](CallFrame&) {
    passed = true;
    return PF_Err{PF_Err_NONE};
  });
  const PF_Err error = body(*frame);
  return passed ? error : kRefused;
}

// Faults shared by many callbacks; each returns the error to answer with.
PF_Err badArgument(CallFrame& frame, const char* name, const std::string& what);

}  // namespace vellumtide::headless
