#include "cli/help/help_format.h"

#include <algorithm>
#include <sstream>

#include "cli/help/command_tree.h"

namespace vellumtide::cli {
namespace {

constexpr std::size_t kWidth = 79;
constexpr std::size_t kTextColumn = 26;

// `text` between the columns `indent` and kWidth, the first line at `column` already.
std::string wrapped(const std::string& text, std::size_t column, std::size_t indent) {
  std::string result;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (!result.empty() && column + 1 + word.size() > kWidth) {
      result += "\n" + std::string(indent, ' ');
      column = indent;
    } else if (!result.empty()) {
      result += " ";
      ++column;
    }
    result += word;
    column += word.size();
  }
  return result + "\n";
}

// A name and what it means; below each other when the name is long.
std::string entry(const std::string& name, const std::string& meaning) {
  std::string line = "  " + name;
  const bool fits = line.size() + 2 <= kTextColumn;
  line += fits ? std::string(kTextColumn - line.size(), ' ') : "\n" + std::string(kTextColumn, ' ');
  return line + wrapped(meaning, kTextColumn, kTextColumn);
}

std::string meaningOf(const CLI::Option& option) {
  std::string meaning = option.get_description();
  if (!option.get_default_str().empty()) meaning += " (default: " + option.get_default_str() + ")";
  return meaning;
}

std::string optionEntry(const CLI::Option& option) {
  const std::string value = valueName(option);
  const bool onlyLong = option.get_snames().empty();
  return entry(
      (onlyLong ? "    " : "") + joined(flagsOf(option), ", ") + (value.empty() ? "" : " " + value),
      meaningOf(option));
}

bool takesSeveral(const CLI::Option& option) {
  return option.get_expected_max() > 1;
}

std::string argumentUsage(const CLI::Option& argument) {
  const std::string name = argument.get_name(true) + (takesSeveral(argument) ? "..." : "");
  return argument.get_required() ? name : "[" + name + "]";
}

// The options that have to be given, each once; the others as a group.
std::string usage(const CLI::App& app, const std::string& name) {
  std::string required;
  bool hasOthers = false;
  for (const CLI::Option* option : optionsOf(app)) {
    if (option->get_required()) {
      required += " " + flagsOf(*option).front() + " " + valueName(*option);
    } else {
      hasOthers = true;
    }
  }
  std::string line = "Usage: " + name;
  for (const CLI::Option* argument : argumentsOf(app))
    line += " " + argumentUsage(*argument);
  line += required;
  if (hasOthers) line += " [OPTION]...";
  if (!commandsOf(app).empty()) line += " COMMAND ...";
  return line + "\n";
}

std::string optionGroups(const CLI::App& app) {
  const std::vector<const CLI::Option*> options = optionsOf(app);
  std::vector<std::string> groups = app.get_groups();
  // The general ones, with --help, go last.
  std::stable_partition(groups.begin(), groups.end(),
                        [](const std::string& group) { return group != "Options"; });
  std::string text;
  for (const std::string& group : groups) {
    std::string entries;
    for (const CLI::Option* option : options) {
      if (option->get_group() == group) entries += optionEntry(*option);
    }
    if (!entries.empty()) {
      text +=
          "\n" + (group == "Options" && !text.empty() ? "Other options" : group) + ":\n" + entries;
    }
  }
  return text;
}

}  // namespace

std::string HelpFormat::make_help(const CLI::App* app, std::string name,
                                  CLI::AppFormatMode /*mode*/) const {
  std::string text = wrapped(app->get_description(), 0, 0) + "\n" + usage(*app, name);
  std::string arguments, commands;
  for (const CLI::Option* argument : argumentsOf(*app)) {
    if (argument->get_description().empty()) continue;
    arguments += entry(argument->get_name(true), meaningOf(*argument));
  }
  if (!arguments.empty()) text += "\nArguments:\n" + arguments;
  for (const CLI::App* command : commandsOf(*app))
    commands += entry(command->get_name(), command->get_description());
  if (!commands.empty()) text += "\nCommands:\n" + commands;
  text += optionGroups(*app);
  const std::string footer = app->get_footer();
  return footer.empty() ? text : text + "\n" + footer + "\n";
}

}  // namespace vellumtide::cli
