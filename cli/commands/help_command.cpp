// `vellumtide help COMMAND`, the same as `vellumtide COMMAND --help`.
#include <memory>

#include "cli/commands/commands.h"
#include "cli/help/command_tree.h"
#include "cli/help/suggestion.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {
namespace {

std::vector<std::string> namesOf(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : commandsOf(app))
    names.push_back(command->get_name());
  return names;
}

void showHelp(CLI::App& app, const std::vector<std::string>& words) {
  CLI::App* shown = &app;
  std::string parents;
  for (const std::string& word : words) {
    CLI::App* inner = findCommand(*shown, word);
    if (inner == nullptr || inner == shown) {
      throw Failure(ExitStatus::Usage,
                    "there is no command " + word + suggestion(word, namesOf(*shown)));
    }
    parents += (parents.empty() ? "" : " ") + shown->get_name();
    shown = inner;
  }
  // Of a command that was parsed, such as the program itself, help() shows the innermost.
  writeOut(shown->get_formatter()->make_help(
      shown, parents + (parents.empty() ? "" : " ") + shown->get_name(),
      CLI::AppFormatMode::Normal));
}

}  // namespace

void addHelpCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("help", "Show the help of a command");
  const auto words = std::make_shared<std::vector<std::string>>();
  command->add_option("COMMAND", *words, "the command, such as render or project new");
  command->callback([words, &app] { showHelp(app, *words); });
}

}  // namespace vellumtide::cli
