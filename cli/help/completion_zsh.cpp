#include "cli/help/command_tree.h"
#include "cli/help/completion.h"

namespace vellumtide::cli {
namespace {

using Kind = ValueShape::Kind;

// In quotes, with a backslash before what the argument specifications of zsh give a meaning.
std::string specText(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '[' || c == ']' || c == ':' || c == '\\') result += '\\';
    result += c;
  }
  return result;
}

std::string descriptions(const std::vector<const CLI::App*>& commands) {
  std::string result;
  for (const CLI::App* command : commands)
    result += " " + shellQuoted(command->get_name() + ":" + command->get_description());
  return result;
}

// What _arguments shall offer for a value.
std::string offer(const ValueShape& shape) {
  switch (shape.kind) {
    case Kind::Choice:
      return "(" + joined(shape.choices, " ") + ")";
    case Kind::File:
      if (shape.endings.empty()) return "_files";
      // A single word between parentheses at the end would be taken for qualifiers.
      return "_files -g \"*." +
             (shape.endings.size() == 1 ? shape.endings[0]
                                        : "(" + joined(shape.endings, "|") + ")") +
             "\"";
    case Kind::Folder:
      return "_files -/";
    case Kind::Control:
      return std::string(" _vellumtide_controls ") + shape.mark;
    case Kind::Command:
      return "_vellumtide_commands";
    case Kind::None:
      break;
  }
  return " ";
}

std::string optionSpecs(const CLI::App& command) {
  std::string result;
  for (const CLI::Option* option : optionsOf(command)) {
    for (const std::string& flag : flagsOf(*option)) {
      const bool isLong = flag.starts_with("--");
      std::string spec = "*" + flag + (takesValue(*option) ? (isLong ? "=" : "+") : "") + "[" +
                         specText(option->get_description()) + "]";
      if (takesValue(*option))
        spec += ":" + specText(valueName(*option)) + ":" + offer(shapeOf(*option));
      result += " \\\n      " + shellQuoted(spec);
    }
  }
  return result;
}

std::string argumentSpec(const CLI::App& command) {
  if (argumentsOf(command).empty()) return "";
  return " \\\n      " + shellQuoted("*:argument:" + offer(shapeOfArguments(command)));
}

constexpr const char* kControls = R"(_vellumtide_controls() {
  local program=${(Q)${(M)words:#*.pb[kg]}[1]}
  local -a found
  [[ -n $program ]] || return 1
  found=("${(@f)$($vellumtide candidates -- "${program/#\~/$HOME}" "$1" "${(Q)PREFIX}" 2>/dev/null)}")
  compadd -S '' -- $found
}

)";

}  // namespace

std::string zshCompletion(const CLI::App& app) {
  std::string groups, leaves;
  for (const CLI::App* command : commandsOf(app)) {
    if (commandsOf(*command).empty()) continue;
    groups += "    " + command->get_name() + ")\n      names=(" +
              descriptions(commandsOf(*command)) + " ) ;;\n";
  }
  forEachCommand(app, [&](const std::string& path, const CLI::App& command) {
    leaves += "    " + shellQuoted(path) + ")\n      _arguments -s" + optionSpecs(command) +
              argumentSpec(command) + " ;;\n";
  });
  return "#compdef vellumtide\n# Completion of vellumtide for zsh.\n\n" + std::string(kControls) +
         "_vellumtide_commands() {\n  local -a names\n  names=(" + descriptions(commandsOf(app)) +
         " )\n  _describe command names\n}\n\n"
         "_vellumtide() {\n"
         "  local -a names\n"
         "  local vellumtide=$words[1] place=$words[2]\n"
         "  if ((CURRENT == 2)) || [[ $place == -* ]]; then\n"
         "    if [[ $PREFIX != -* ]]; then _vellumtide_commands; return; fi\n"
         "    _arguments" +
         optionSpecs(app) +
         "\n    return\n"
         "  fi\n"
         "  case $place in\n" +
         groups +
         "  esac\n"
         "  if ((${#names})); then\n"
         "    if ((CURRENT == 3)); then _describe command names; return; fi\n"
         "    place+=\" $words[3]\"\n"
         "    shift words\n"
         "    ((CURRENT--))\n"
         "  fi\n"
         "  shift words\n"
         "  ((CURRENT--))\n"
         "  case $place in\n" +
         leaves +
         "  esac\n"
         "}\n\n"
         "if [[ $funcstack[1] == _vellumtide ]]; then _vellumtide \"$@\"; else compdef _vellumtide "
         "vellumtide; fi\n";
}

}  // namespace vellumtide::cli
