#include <memory>

#include "cli/commands/commands.h"
#include "cli/help/completion.h"

namespace vellumtide::cli {

void addCompletionCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("completion", "Print the completion script of a shell");
  const auto shell = std::make_shared<std::string>();
  command->add_option("SHELL", *shell, "bash, zsh or fish")
      ->required()
      ->check(CLI::IsMember({"bash", "zsh", "fish"}));
  command->callback([shell, &app] {
    writeOut(*shell == "bash"  ? bashCompletion(app)
             : *shell == "zsh" ? zshCompletion(app)
                               : fishCompletion(app));
  });
}

}  // namespace vellumtide::cli
