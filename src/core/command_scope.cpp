#include "core/command_scope.h"

#include <iterator>
#include <new>
#include <utility>

#include "core/host_memory.h"

namespace vellumtide {

AEGP_PluginID currentPluginId = 0;

namespace {

CommandScope* topScope = nullptr;
A_long contextCounter = 0;

constexpr const char* kCommandNames[] = {
    "PF_Cmd_ABOUT",
    "PF_Cmd_GLOBAL_SETUP",
    "PF_Cmd_UNUSED_0",
    "PF_Cmd_GLOBAL_SETDOWN",
    "PF_Cmd_PARAMS_SETUP",
    "PF_Cmd_SEQUENCE_SETUP",
    "PF_Cmd_SEQUENCE_RESETUP",
    "PF_Cmd_SEQUENCE_FLATTEN",
    "PF_Cmd_SEQUENCE_SETDOWN",
    "PF_Cmd_DO_DIALOG",
    "PF_Cmd_FRAME_SETUP",
    "PF_Cmd_RENDER",
    "PF_Cmd_FRAME_SETDOWN",
    "PF_Cmd_USER_CHANGED_PARAM",
    "PF_Cmd_UPDATE_PARAMS_UI",
    "PF_Cmd_EVENT",
    "PF_Cmd_GET_EXTERNAL_DEPENDENCIES",
    "PF_Cmd_COMPLETELY_GENERAL",
    "PF_Cmd_QUERY_DYNAMIC_FLAGS",
    "PF_Cmd_AUDIO_RENDER",
    "PF_Cmd_AUDIO_SETUP",
    "PF_Cmd_AUDIO_SETDOWN",
    "PF_Cmd_ARBITRARY_CALLBACK",
    "PF_Cmd_SMART_PRE_RENDER",
    "PF_Cmd_SMART_RENDER",
    "PF_Cmd_RESERVED1",
    "PF_Cmd_RESERVED2",
    "PF_Cmd_NUM_CMDS",
};
static_assert(std::size(kCommandNames) == 28);

CommandContext* makeContext(PF_InData* inData, AEGP_PluginID pluginId) {
  void* block = allocateHostMemory(*inData, sizeof(CommandContext));
  if (!block) return nullptr;
  auto* context = new (block) CommandContext(inData);
  context->handle = handleOfHostMemory(block);
  context->ordinal = contextCounter++;
  context->pluginId = pluginId;
  return context;
}

}  // namespace

CommandScope::CommandScope(PF_Cmd cmd, PF_InData* inData, AEGP_PluginID pluginId)
    : command(cmd), commandName(commandNameOf(cmd)) {
  currentPluginId = pluginId;
  if (inData) context = makeContext(inData, pluginId);
  previous = topScope;
  if (previous) previous->next = this;
  topScope = this;
}

CommandScope::~CommandScope() {
  topScope = previous;
  if (previous) previous->next = nullptr;
  if (!context) return;
  PF_InData& inData = *context->inData;
  context->~CommandContext();
  freeHostMemory(inData, context);
}

CommandScope* CommandScope::top() {
  return topScope;
}

PF_InData* currentInData() {
  return topScope && topScope->context ? topScope->context->inData : nullptr;
}

SuiteHandler* currentSuites() {
  return topScope && topScope->context ? &topScope->context->suites : nullptr;
}

AEGP_PluginID contextPluginId() {
  return topScope && topScope->context ? topScope->context->pluginId : 0;
}

A_u_long readAndClearContextFlags() {
  if (!topScope || !topScope->context) return 0;
  return std::exchange(topScope->context->flags, 0);
}

A_u_long orContextFlags(A_u_long mask) {
  if (!topScope || !topScope->context) return 0;
  return topScope->context->flags |= mask;
}

const char* commandNameOf(PF_Cmd command) {
  if (command < 0 || command >= static_cast<PF_Cmd>(std::size(kCommandNames))) return "";
  return kCommandNames[command];
}

}  // namespace vellumtide
