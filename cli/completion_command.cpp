// Completions for shells, written from the commands and options themselves.
#include <memory>

#include "cli/commands.h"
#include "cli/failure.h"

namespace vellumtide::cli {
namespace {

std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App*) { return true; });
}

std::vector<const CLI::Option*> optionsOf(const CLI::App& app) {
  return app.get_options([](const CLI::Option* option) {
    return option->nonpositional() && !option->get_group().empty();
  });
}

// "-o" and "--output" of one option.
std::vector<std::string> flagsOf(const CLI::Option& option) {
  std::vector<std::string> flags;
  for (const std::string& name : option.get_snames())
    flags.push_back("-" + name);
  for (const std::string& name : option.get_lnames())
    flags.push_back("--" + name);
  return flags;
}

// The values that an option takes, between blanks; "" when there is no list of them.
std::string valuesOf(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const std::size_t open = type.find('{'), close = type.rfind('}');
  if (open == std::string::npos || close == std::string::npos) return "";
  std::string values = type.substr(open + 1, close - open - 1);
  for (char& c : values)
    c = c == ',' ? ' ' : c;
  return values;
}

// In single quotes, as every one of the shells takes it; `escaped` get a backslash.
std::string literal(const std::string& text, const std::string& escaped = "") {
  std::string result = "'";
  for (char c : text) {
    if (escaped.find(c) != std::string::npos) result += '\\';
    result += c == '\'' ? std::string("'\\''") : std::string(1, c);
  }
  return result + "'";
}

// Calls action(path, app) for the commands at the end of the tree: ("project render", ...).
template <typename Action>
void forEachLeaf(const CLI::App& app, const std::string& path, Action action) {
  for (const CLI::App* command : commandsOf(app)) {
    const std::string name = path + (path.empty() ? "" : " ") + command->get_name();
    if (commandsOf(*command).empty()) {
      action(name, *command);
    } else {
      forEachLeaf(*command, name, action);
    }
  }
}

std::string namesOf(const std::vector<const CLI::App*>& commands) {
  std::string names;
  for (const CLI::App* command : commands) {
    names += (names.empty() ? "" : " ") + command->get_name();
  }
  return names;
}

std::string bashScript(const CLI::App& app) {
  std::string words, values;
  forEachLeaf(app, "", [&](const std::string& path, const CLI::App& command) {
    std::string flags;
    for (const CLI::Option* option : optionsOf(command)) {
      for (const std::string& flag : flagsOf(*option))
        flags += (flags.empty() ? "" : " ") + flag;
      const std::string list = valuesOf(*option);
      if (!list.empty())
        values += "    " + flagsOf(*option).back() + ") words=" + literal(list) + " ;;\n";
    }
    words += "    " + literal(path) + ") words=" + literal(flags) + " ;;\n";
  });
  std::string groups;
  for (const CLI::App* command : commandsOf(app)) {
    const std::string names = namesOf(commandsOf(*command));
    if (!names.empty())
      groups += "    " + command->get_name() + ") words=" + literal(names) + " ;;\n";
  }
  return "# Completion of vellumtide for bash.\n"
         "_vellumtide() {\n"
         "  local current=${COMP_WORDS[COMP_CWORD]} words='' path=${COMP_WORDS[1]}\n"
         "  COMPREPLY=()\n"
         "  if ((COMP_CWORD == 1)); then\n"
         "    COMPREPLY=($(compgen -W " +
         literal(namesOf(commandsOf(app))) +
         " -- \"$current\"))\n"
         "    return\n"
         "  fi\n"
         "  case $path in\n" +
         groups +
         "  esac\n"
         "  if [[ -n $words ]]; then\n"
         "    if ((COMP_CWORD == 2)); then\n"
         "      COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
         "      return\n"
         "    fi\n"
         "    path+=\" ${COMP_WORDS[2]}\"\n"
         "  fi\n"
         "  words=''\n"
         "  case ${COMP_WORDS[COMP_CWORD - 1]} in\n" +
         values +
         "  esac\n"
         "  if [[ -z $words && $current == -* ]]; then\n"
         "    case $path in\n" +
         words +
         "    esac\n"
         "  fi\n"
         "  COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
         "}\n"
         "complete -o default -F _vellumtide vellumtide\n";
}

std::string zshDescriptions(const std::vector<const CLI::App*>& commands) {
  std::string result;
  for (const CLI::App* command : commands) {
    result += " " + literal(command->get_name() + ":" + command->get_description());
  }
  return result;
}

std::string zshArguments(const CLI::App& command) {
  std::string result;
  for (const CLI::Option* option : optionsOf(command)) {
    const std::string values = valuesOf(*option);
    for (const std::string& flag : flagsOf(*option)) {
      std::string spec = "*" + flag;
      std::string action;
      if (option->get_items_expected_max() > 0) {
        action = values.empty() ? ":value:_files" : ":value:(" + values + ")";
      }
      result += " \\\n      " + literal(spec + "[") + literal(option->get_description(), "[]:") +
                literal("]" + action);
    }
  }
  return result + " \\\n      '*:file:_files'";
}

std::string zshScript(const CLI::App& app) {
  std::string groups, leaves;
  for (const CLI::App* command : commandsOf(app)) {
    if (commandsOf(*command).empty()) continue;
    groups += "    " + command->get_name() + ")\n      names=(" +
              zshDescriptions(commandsOf(*command)) + " ) ;;\n";
  }
  forEachLeaf(app, "", [&](const std::string& path, const CLI::App& command) {
    leaves += "    " + literal(path) + ")\n      _arguments" + zshArguments(command) + " ;;\n";
  });
  return "#compdef vellumtide\n"
         "# Completion of vellumtide for zsh.\n"
         "_vellumtide() {\n"
         "  local -a names\n"
         "  local place=$words[2]\n"
         "  if ((CURRENT == 2)); then\n"
         "    names=(" +
         zshDescriptions(commandsOf(app)) +
         " )\n"
         "    _describe command names\n"
         "    return\n"
         "  fi\n"
         "  case $place in\n" +
         groups +
         "  esac\n"
         "  if ((${#names})); then\n"
         "    if ((CURRENT == 3)); then\n"
         "      _describe command names\n"
         "      return\n"
         "    fi\n"
         "    place+=\" $words[3]\"\n"
         "    shift words\n"
         "    ((CURRENT--))\n"
         "  fi\n"
         "  shift words\n"
         "  ((CURRENT--))\n"
         "  case $place in\n" +
         leaves +
         "  esac\n"
         "}\n"
         "if [[ $funcstack[1] == _vellumtide ]]; then _vellumtide \"$@\"; else compdef _vellumtide "
         "vellumtide; fi\n";
}

void addFishCommand(const CLI::App& app, const std::string& condition, std::string& script) {
  const std::string start = "complete -c vellumtide -n " + literal(condition);
  const std::string names = namesOf(commandsOf(app));
  for (const CLI::App* command : commandsOf(app)) {
    script += start + " -f -a " + command->get_name() + " -d " +
              literal(command->get_description()) + "\n";
  }
  for (const CLI::Option* option : optionsOf(app)) {
    script += start;
    for (const std::string& name : option->get_snames())
      script += " -s " + name;
    for (const std::string& name : option->get_lnames())
      script += " -l " + name;
    const std::string values = valuesOf(*option);
    if (!values.empty()) {
      script += " -x -a " + literal(values);
    } else if (option->get_items_expected_max() > 0) {
      script += " -r";
    }
    script += " -d " + literal(option->get_description()) + "\n";
  }
}

std::string fishScript(const CLI::App& app) {
  std::string script = "# Completion of vellumtide for fish.\n";
  addFishCommand(app, "__fish_use_subcommand", script);
  for (const CLI::App* command : commandsOf(app)) {
    const std::string seen = "__fish_seen_subcommand_from " + command->get_name();
    const std::vector<const CLI::App*> inner = commandsOf(*command);
    const std::string names = namesOf(inner);
    addFishCommand(*command,
                   inner.empty() ? seen : seen + "; and not __fish_seen_subcommand_from " + names,
                   script);
    for (const CLI::App* innerCommand : inner) {
      addFishCommand(*innerCommand,
                     seen + "; and __fish_seen_subcommand_from " + innerCommand->get_name(),
                     script);
    }
  }
  return script;
}

}  // namespace

void addCompletionCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("completion", "Print the completion script of a shell");
  const auto shell = std::make_shared<std::string>();
  command->add_option("SHELL", *shell, "bash, zsh or fish")
      ->required()
      ->check(CLI::IsMember({"bash", "zsh", "fish"}));
  command->callback([shell, &app] {
    writeOut(*shell == "bash"  ? bashScript(app)
             : *shell == "zsh" ? zshScript(app)
                               : fishScript(app));
  });
}

}  // namespace vellumtide::cli
