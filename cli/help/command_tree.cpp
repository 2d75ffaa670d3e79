#include "cli/help/command_tree.h"

#include <algorithm>
#include <sstream>

namespace vellumtide::cli {
namespace {

void walk(const CLI::App& app, const std::string& path,
          const std::function<void(const std::string&, const CLI::App&)>& action) {
  for (const CLI::App* command : commandsOf(app)) {
    const std::string name = path + (path.empty() ? "" : " ") + command->get_name();
    if (commandsOf(*command).empty()) {
      action(name, *command);
    } else {
      walk(*command, name, action);
    }
  }
}

}  // namespace

std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

CLI::App* findCommand(CLI::App& app, const std::string& path) {
  CLI::App* found = &app;
  std::istringstream names(path);
  for (std::string name; found != nullptr && names >> name;) {
    const std::vector<CLI::App*> named =
        found->get_subcommands([&name](CLI::App* command) { return command->get_name() == name; });
    found = named.empty() ? nullptr : named.front();
  }
  return found;
}

std::vector<const CLI::Option*> optionsOf(const CLI::App& command) {
  return command.get_options([](const CLI::Option* option) {
    return option->nonpositional() && !option->get_group().empty();
  });
}

std::vector<const CLI::Option*> argumentsOf(const CLI::App& command) {
  return command.get_options([](const CLI::Option* option) {
    return option->get_positional() && !option->get_group().empty();
  });
}

std::vector<std::string> flagsOf(const CLI::Option& option) {
  std::vector<std::string> flags;
  for (const std::string& name : option.get_snames())
    flags.push_back("-" + name);
  for (const std::string& name : option.get_lnames())
    flags.push_back("--" + name);
  return flags;
}

bool takesValue(const CLI::Option& option) {
  return option.get_items_expected_max() > 0;
}

std::vector<std::string> choicesOf(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const std::size_t open = type.find('{'), close = type.rfind('}');
  std::vector<std::string> choices;
  if (open == std::string::npos || close == std::string::npos) return choices;
  std::size_t start = open + 1;
  while (start < close) {
    const std::size_t end = std::min(type.find(',', start), close);
    choices.push_back(type.substr(start, end - start));
    start = end + 1;
  }
  return choices;
}

std::string valueName(const CLI::Option& option) {
  if (!takesValue(option)) return "";
  const std::vector<std::string> choices = choicesOf(option);
  if (!choices.empty()) return joined(choices, "|");
  const std::string type = option.get_type_name();
  const std::string name = type.substr(0, type.find(':'));  // checks follow the colon
  if (name == "INT" || name == "UINT") return "N";
  return name == "FLOAT" ? "X" : name;
}

void forEachCommand(const CLI::App& app,
                    const std::function<void(const std::string&, const CLI::App&)>& action) {
  walk(app, "", action);
}

std::string joined(const std::vector<std::string>& texts, const std::string& between) {
  std::string result;
  for (const std::string& text : texts)
    result += (result.empty() ? "" : between) + text;
  return result;
}

}  // namespace vellumtide::cli
