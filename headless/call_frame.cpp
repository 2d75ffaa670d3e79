#include "headless/call_frame.h"

namespace vellumtide::headless {
namespace {

thread_local CallFrame* topFrame = nullptr;
thread_local Host* lastHost = nullptr;
const RenderOptions kNoFrame;

}  // namespace

CallFrame::CallFrame(Host& host, Effect* effect, PF_Cmd command, const RenderOptions* options)
    : host_(host),
      effect_(effect),
      command_(command),
      options_(options ? options : &kNoFrame),
      previous_(topFrame),
      outerCommand_(host.books().command()),
      suitesBefore_(host.books().acquiredSuites()) {
  topFrame = this;
  lastHost = &host;
  host.books().setCommand(commandName(command));
}

CallFrame::~CallFrame() {
  Books& books = host_.books();
  for (const auto& [serial, index] : paramsOut) {
    books.fault("parameter " + std::to_string(index) + " was checked out and not checked in");
    --books.holdings.params;
  }
  for (const auto& [suite, count] : books.acquiredSuites()) {
    const auto before = suitesBefore_.find(suite);
    const int64_t held = count - (before == suitesBefore_.end() ? 0 : before->second);
    if (held <= 0) continue;
    books.fault("suite \"" + suite.first + "\" " + std::to_string(suite.second) +
                " was acquired and not released" +
                (held > 1 ? ", " + std::to_string(held) + " times" : ""));
  }
  books.setCommand(outerCommand_);
  topFrame = previous_;
}

CallFrame* CallFrame::current() {
  return topFrame;
}

Effect* CallFrame::effectOf(PF_ProgPtr reference, const char* caller) {
  if (reference == referenceOf(host_)) return nullptr;
  if (effect_ && reference == referenceOf(*effect_)) return effect_;
  for (Effect& effect : host_.effects()) {
    if (reference == referenceOf(effect)) return &effect;
  }
  books().fault(std::string(caller) + " was given an effect_ref that is not this host's");
  return nullptr;
}

Layer* CallFrame::layerOf(AEGP_LayerH reference, const char* caller) {
  for (Composition& comp : host_.compositions()) {
    for (Layer& layer : comp.layers()) {
      if (reinterpret_cast<AEGP_LayerH>(&layer) == reference) return &layer;
    }
  }
  books().fault(std::string(caller) + " was given an unknown layer");
  return nullptr;
}

PF_ProgPtr referenceOf(Effect& effect) {
  return reinterpret_cast<PF_ProgPtr>(&effect);
}
PF_ProgPtr referenceOf(Host& host) {
  return reinterpret_cast<PF_ProgPtr>(&host);
}

void reportStrayCall(const char* name) {
  if (lastHost) lastHost->books().fault(std::string(name) + " was called outside a command");
}

void forgetLastHost(const Host& host) {
  if (lastHost == &host) lastHost = nullptr;
}

PF_Err badArgument(CallFrame& frame, const char* name, const std::string& what) {
  frame.books().fault(std::string(name) + ": " + what);
  return PF_Err_BAD_CALLBACK_PARAM;
}

PF_EffectWorld* HostState::lend(World& world) {
  worldFormats[&world] = world.format();
  world.def().platform_ref = &world;
  return &world.def();
}

void HostState::forget(const Effect& effect) {
  for (auto& [reference, target] : streams) {
    if (target.effect == &effect) target.effect = nullptr;
  }
  for (auto& [reference, target] : effectRefs) {
    if (target.effect == &effect) target.effect = nullptr;
  }
}

}  // namespace vellumtide::headless
