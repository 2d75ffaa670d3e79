// The scope of one call of the entry point: the only way from this system's code to the host.
#pragma once

#include "aeapi/effect_data.h"
#include "core/suite_handler.h"

namespace vellumtide {

// What a command may use of the host. Lives in a locked host handle for as long as the call.
struct CommandContext {
  PF_Handle handle = nullptr;  // holds this block
  A_long ordinal = 0;          // from a process-wide counter, 0 for the first context made
  A_u_long flags = 0;
  PF_InData* inData = nullptr;
  SuiteHandler suites;
  AEGP_PluginID pluginId = 0;

  explicit CommandContext(PF_InData* in) : inData(in), suites(in->pica_basicP) {}
};

// Stack object of one entry-point call. Scopes nest when the host calls back into the module while
// it serves a command; the newest is the top. Without in-data, or when the host gives no handle for
// the context, the scope has no context and the accessors below answer as outside any command.
class CommandScope {
 public:
  CommandScope(PF_Cmd command, PF_InData* inData, AEGP_PluginID pluginId);
  ~CommandScope();
  CommandScope(const CommandScope&) = delete;
  CommandScope& operator=(const CommandScope&) = delete;

  static CommandScope* top();

  CommandScope* previous = nullptr;
  CommandScope* next = nullptr;
  CommandContext* context = nullptr;
  PF_Cmd command;
  const char* commandName;
};

// The plug-in id that every AEGP suite call passes; set by each new scope and not restored when an
// inner scope closes.
extern AEGP_PluginID currentPluginId;

PF_InData* currentInData();       // null outside a command
SuiteHandler* currentSuites();    // null outside a command
AEGP_PluginID contextPluginId();  // 0 outside a command

A_u_long readAndClearContextFlags();     // 0 outside a command
A_u_long orContextFlags(A_u_long mask);  // the new value; 0 outside a command

// The diagnostic name of a command number, "" for a number outside the table of 28.
const char* commandNameOf(PF_Cmd command);

}  // namespace vellumtide
