// The commands of `vellumtide`. Each adds its subcommand with a callback that does the work and
// throws Failure when it cannot.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "cli/text/messages.h"

namespace vellumtide::cli {

void addRenderCommand(CLI::App& app);
// Has the report and the progress of a render tell why its words were not understood.
void tellWrongRender(const std::vector<std::string>& words, const std::string& message);
void addInspectCommand(CLI::App& app);
void addGlslCommand(CLI::App& app);
void addCheckCommand(CLI::App& app);
void addCompareCommand(CLI::App& app);
void addSheetCommand(CLI::App& app);
void addDialogCommands(CLI::App& app);
void addProjectCommand(CLI::App& app);
void addCompletionCommand(CLI::App& app);
void addCandidatesCommand(CLI::App& app);
void addManualCommand(CLI::App& app);
void addHelpCommand(CLI::App& app);
void addVersionFlag(CLI::App& app, const std::string& version);

}  // namespace vellumtide::cli
