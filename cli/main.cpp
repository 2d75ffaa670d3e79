#include <exception>
#include <string>
#include <vector>

#include "cli/commands/commands.h"
#include "cli/help/argument_words.h"
#include "cli/help/command_tree.h"
#include "cli/help/help_examples.h"
#include "cli/help/help_format.h"
#include "cli/help/help_headings.h"
#include "cli/help/suggestion.h"
#include "cli/os/interruption.h"
#include "cli/os/signals.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {
namespace {

int report(const std::string& message, ExitStatus status) {
  say(message);
  return static_cast<int>(status);
}

void addCommands(CLI::App& app) {
  addVersionFlag(app, VELLUMTIDE_VERSION);
  addRenderCommand(app);
  addInspectCommand(app);
  addGlslCommand(app);
  addCheckCommand(app);
  addSheetCommand(app);
  addCompareCommand(app);
  addDialogCommands(app);
  addProjectCommand(app);
  addCompletionCommand(app);
  addCandidatesCommand(app);
  addManualCommand(app);
  addHelpCommand(app);
  nameValues(app);
  addExamples(app);
  refuseEmptyValues(app);
}

// The innermost command that was named.
const CLI::App& namedCommand(const CLI::App& app) {
  const std::vector<CLI::App*> named = app.get_subcommands();
  return named.empty() ? app : namedCommand(*named.back());
}

// "project render "; "" for the program itself.
std::string pathOf(const CLI::App& command) {
  if (command.get_parent() == nullptr) return "";
  return pathOf(*command.get_parent()) + command.get_name() + " ";
}

// A word that no command or option knows explains more than what was found missing for its sake.
std::string usageMessage(const CLI::App& app, const CLI::ParseError& error) {
  const CLI::App& command = namedCommand(app);
  const std::vector<const CLI::App*> inner = commandsOf(command);
  for (const std::string& word : app.remaining(true)) {
    std::vector<std::string> known;
    if (word.size() > 1 && word[0] == '-' && word != "--") {
      for (const CLI::Option* option : optionsOf(command)) {
        for (const std::string& flag : flagsOf(*option))
          known.push_back(flag);
      }
      const std::string flag = word.substr(0, word.find('='));
      return "there is no option " + flag + suggestion(flag, known);
    }
    if (inner.empty()) continue;
    for (const CLI::App* candidate : inner)
      known.push_back(candidate->get_name());
    return "there is no command " + word + suggestion(word, known);
  }
  return inner.empty() ? error.what() : "a command has to follow";
}

int run(int argc, char** argv) {
  CLI::App app("Runs Pixel Bender kernels and graphs on the graphics card.", "vellumtide");
  app.set_help_flag("-h,--help", "show this help and end");
  app.formatter(std::make_shared<HelpFormat>());
  app.require_subcommand(1);
  app.allow_windows_style_options(false);  // "/x" is a path, everywhere
  app.footer(
      "`vellumtide COMMAND --help` tells more, with examples.\n\n"
      "Exit status: 0 done, 1 a frame or something else failed, 2 wrong usage,\n"
      "3 the program cannot be loaded or does not build, 4 an image cannot be read\n"
      "or written, 5 no usable GL device, 128 + n ended by signal n.");
  addCommands(app);
  if (argc <= 1) {
    say("a command has to follow\n\n" + app.help());
    return static_cast<int>(ExitStatus::Usage);
  }
  const std::vector<std::string> words = wordsOf(argc, argv);
  try {
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
  } catch (const CLI::CallForHelp&) {
    writeOut(app.help());
  } catch (const CLI::Success&) {
    return 0;
  } catch (const CLI::ParseError& error) {
    const std::string message =
        usageMessage(app, error) + " (see vellumtide " + pathOf(namedCommand(app)) + "--help)";
    if (!words.empty() && words.front() == "render") tellWrongRender(words, message);
    return report(message, ExitStatus::Usage);
  }
  return 0;
}

}  // namespace
}  // namespace vellumtide::cli

int main(int argc, char** argv) {
  using namespace vellumtide::cli;
  try {
    watchInterruptions();
    return run(argc, argv);
  } catch (const ReaderGone&) {
    endInterrupted(kReaderGone);
  } catch (const std::exception& error) {
    const Failure failure = failureOf(error);
    return report(failure.what(), failure.status);
  }
}
