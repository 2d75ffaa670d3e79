// `vellumtide manual`, which no help shows: the commands, options and examples of the manual page.
#include "cli/commands/commands.h"
#include "cli/help/command_tree.h"
#include "cli/help/help_examples.h"

namespace vellumtide::cli {
namespace {

std::string roff(std::string_view text) {
  std::string result;
  for (const char c : text) {
    const bool startsLine = result.empty() || result.back() == '\n';
    if (startsLine && (c == '.' || c == '\'')) result += "\\&";
    if (c == '\\') {
      result += "\\e";
    } else if (c == '-') {
      result += "\\-";
    } else if (c == '\'') {
      result += "\\(aq";
    } else if (c == '~') {
      result += "\\(ti";
    } else {
      result += c;
    }
  }
  return result;
}

std::string bold(std::string_view text) {
  return "\\fB" + roff(text) + "\\fR";
}

std::string italic(std::string_view text) {
  return "\\fI" + roff(text) + "\\fR";
}

std::string optionEntry(const CLI::Option& option) {
  std::string text = ".TP\n";
  for (const std::string& flag : flagsOf(option))
    text += (text.back() == '\n' ? "" : ", ") + bold(flag);
  const std::string value = valueName(option);
  if (!value.empty()) text += " " + (choicesOf(option).empty() ? italic(value) : bold(value));
  text += "\n" + roff(option.get_description());
  if (!option.get_default_str().empty())
    text += " (default: " + roff(option.get_default_str()) + ")";
  return text + "\n";
}

std::string argumentsOfUsage(const CLI::App& command) {
  std::string text;
  for (const CLI::Option* argument : argumentsOf(command)) {
    const std::string name =
        italic(argument->get_name(true)) + (argument->get_expected_max() > 1 ? "..." : "");
    text += " " + (argument->get_required() ? name : "[" + name + "]");
  }
  for (const CLI::Option* option : optionsOf(command)) {
    if (option->get_required())
      text += " " + bold(flagsOf(*option).front()) + " " + italic(valueName(*option));
  }
  return text;
}

// Options that are not --help, which all commands have.
std::string optionEntries(const CLI::App& command) {
  std::string text;
  for (const CLI::Option* option : optionsOf(command)) {
    if (option != command.get_help_ptr()) text += optionEntry(*option);
  }
  return text;
}

std::string manual(const CLI::App& app) {
  std::string text = ".SH COMMANDS\n";
  forEachCommand(app, [&text](const std::string& path, const CLI::App& command) {
    const std::string options = optionEntries(command);
    text += ".SS " + roff(path) + "\n" + bold("vellumtide " + path) + argumentsOfUsage(command) +
            (options.empty() ? "" : " [" + italic("OPTION") + "]...") + "\n.PP\n" +
            roff(command.get_description()) + ".\n";
    for (const CLI::Option* argument : argumentsOf(command)) {
      text += ".TP\n" + italic(argument->get_name(true)) + "\n" +
              roff(argument->get_description()) + "\n";
    }
    text += options;
    const std::string_view examples = examplesOf(path);
    if (!examples.empty()) {
      text += ".PP\nExamples:\n.PP\n.RS\n.nf\n" + roff(examples) + "\n.fi\n.RE\n";
    }
  });
  return text +
         ".SH OPTIONS WITHOUT A COMMAND\n.TP\n\\fB\\-h\\fR, \\fB\\-\\-help\\fR\n"
         "Show the commands, or with a command its options, and end\n" +
         optionEntries(app);
}

}  // namespace

void addManualCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("manual")->group("");
  command->callback([&app] { writeOut(manual(app)); });
}

}  // namespace vellumtide::cli
