// The commands of a module's life and of its instances.
#include <cstring>
#include <stdexcept>
#include <utility>

#include "headless/call_frame.h"
#include "headless/host.h"

namespace vellumtide::headless {

PF_Err Host::globalSetup() {
  const PF_Err error = call(PF_Cmd_GLOBAL_SETUP, nullptr);
  setUp_ = error == PF_Err_NONE;
  return error;
}

PF_Err Host::paramsSetup() {
  state_->declared.assign(1, PF_ParamDef{});
  state_->paramTexts.clear();
  const PF_Err error = call(PF_Cmd_PARAMS_SETUP, nullptr);
  paramsDeclared_ = error == PF_Err_NONE;
  return error;
}

Effect& Host::addInstance(Layer& layer) {
  if (!paramsDeclared_) paramsSetup();
  Effect& effect = effects_.emplace_back(*this, layer, state_->declared);
  effect.title = module_->name();
  effect.optionsButton = state_->optionsButton;
  return effect;
}

Effect& Host::newInstance(Layer& layer) {
  Effect& effect = addInstance(layer);
  if (paramsDeclared_) call(PF_Cmd_SEQUENCE_SETUP, &effect);
  return effect;
}

Effect& Host::openInstance(Layer& layer, const std::vector<uint8_t>& flatData) {
  Effect& effect = addInstance(layer);
  effect.sequenceData =
      handles_.allocate(BlockFamily::kHandle, flatData.size(), "flattened sequence data");
  if (!effect.sequenceData) throw std::bad_alloc();
  if (!flatData.empty()) std::memcpy(*effect.sequenceData, flatData.data(), flatData.size());
  effect.flat = true;
  if (paramsDeclared_) resetup(effect);
  return effect;
}

PF_Err Host::updateParamsUi(Effect& effect) {
  return call(PF_Cmd_UPDATE_PARAMS_UI, &effect);
}

PF_Err Host::userChangedParam(Effect& effect, PF_ParamIndex index) {
  PF_UserChangedParamExtra extra{index};
  CallArguments arguments;
  arguments.extra = &extra;
  return call(PF_Cmd_USER_CHANGED_PARAM, &effect, arguments);
}

PF_Err Host::doDialog(Effect& effect) {
  return call(PF_Cmd_DO_DIALOG, &effect);
}

PF_Err Host::about(Effect* effect) {
  return call(PF_Cmd_ABOUT, effect);
}

PF_Err Host::flatten(Effect& effect) {
  const PF_Err error = call(PF_Cmd_SEQUENCE_FLATTEN, &effect);
  if (effect.sequenceData && lastCall_.sequenceChanged) effect.flat = true;
  return error;
}

PF_Err Host::resetup(Effect& effect) {
  // Commands from within may flatten what this one makes.
  const bool wasFlat = std::exchange(effect.flat, false);
  const PF_Err error = call(PF_Cmd_SEQUENCE_RESETUP, &effect);
  if (error != PF_Err_NONE && wasFlat) effect.flat = true;
  return error;
}

std::vector<uint8_t> Host::save(Effect& effect) {
  flatten(effect);
  std::vector<uint8_t> flatData;
  if (effect.flat) flatData = handles_.bytes(effect.sequenceData);
  resetup(effect);
  return flatData;
}

Effect& Host::duplicate(Effect& effect) {
  Effect& copy = openInstance(effect.layer(), save(effect));
  copy.controls() = effect.controls();
  copy.title = effect.title;
  return copy;
}

PF_Err Host::sequenceSetdown(Effect& effect) {
  const PF_Err error = call(PF_Cmd_SEQUENCE_SETDOWN, &effect);
  const PF_Handle flat = effect.flat ? lastCall_.sequenceGiven : nullptr;
  // Flat data is plain bytes that the host owns; a module need not free them.
  if (flat && handles_.isLive(flat)) handles_.release(BlockFamily::kHandle, flat, "the host");
  effect.flat = false;
  return error;
}

void Host::closeInstance(Effect& effect) {
  for (const CallFrame* frame = CallFrame::current(); frame; frame = frame->outer()) {
    if (frame->effect() == &effect) throw std::logic_error("the instance is in use by a command");
  }
  if (effect.sequenceData) sequenceSetdown(effect);
  state_->forget(effect);
  effects_.remove_if([&effect](const Effect& other) { return &other == &effect; });
}

PF_Err Host::globalSetdown() {
  const PF_Err error = call(PF_Cmd_GLOBAL_SETDOWN, nullptr);
  setUp_ = false;
  paramsDeclared_ = false;
  return error;
}

void Host::finish() {
  while (!effects_.empty())
    closeInstance(effects_.back());
  if (setUp_) globalSetdown();
  books_.setCommand("closing the books");
  handles_.checkGuards();
  handles_.checkFreedBlocks();
  handles_.reportLeaks();
  for (const auto& [reference, target] : state_->streams) {
    books_.fault("leaked a stream, made in " + target.madeIn);
  }
  for (const auto& [reference, target] : state_->effectRefs) {
    books_.fault("leaked an effect reference, made in " + target.madeIn);
  }
  Holdings rest = holdings();
  rest.handles = rest.locks = rest.streams = rest.effectRefs = 0;
  if (!rest.empty()) books_.fault("still held: " + rest.text());
  books_.setCommand("");
}

}  // namespace vellumtide::headless
