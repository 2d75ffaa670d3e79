#include <algorithm>
#include <cctype>

#include "cli/help/command_tree.h"
#include "cli/help/completion.h"

namespace vellumtide::cli {
namespace {

using Kind = ValueShape::Kind;

// The endings that a description names: "kernel (.pbk) or graph (.pbg)".
std::vector<std::string> endingsIn(const std::string& text) {
  std::vector<std::string> endings;
  for (std::size_t dot = text.find('.'); dot != std::string::npos; dot = text.find('.', dot + 1)) {
    if (dot == 0 || (text[dot - 1] != ' ' && text[dot - 1] != '(')) continue;
    std::size_t end = dot + 1;
    while (end < text.size() && std::islower(static_cast<unsigned char>(text[end])) != 0)
      ++end;
    if (end - dot > 2) endings.push_back(text.substr(dot + 1, end - dot - 1));
  }
  return endings;
}

}  // namespace

ValueShape shapeOf(const CLI::Option& option) {
  ValueShape shape;
  shape.choices = choicesOf(option);
  shape.endings = endingsIn(option.get_description());
  const std::string name = option.nonpositional() ? valueName(option) : option.get_name(true);
  constexpr std::string_view kFiles[] = {"FILE", "IMAGE", "PROGRAM", "PROJECT", "A", "B"};
  const bool isFile = std::find(std::begin(kFiles), std::end(kFiles), name) != std::end(kFiles);
  if (!shape.choices.empty()) {
    shape.kind = Kind::Choice;
  } else if (name.starts_with("NAME=") || name.starts_with("NAME@")) {
    shape.kind = Kind::Control;
    shape.mark = name[4];
  } else if (name == "FOLDER") {
    shape.kind = Kind::Folder;
  } else if (name == "COMMAND") {
    shape.kind = Kind::Command;
  } else if (isFile || !shape.endings.empty()) {
    shape.kind = Kind::File;
  }
  return shape;
}

ValueShape shapeOfArguments(const CLI::App& command) {
  ValueShape all;
  bool anyFile = false;
  for (const CLI::Option* argument : argumentsOf(command)) {
    const ValueShape shape = shapeOf(*argument);
    if (all.kind == Kind::None) all.kind = shape.kind;
    all.choices.insert(all.choices.end(), shape.choices.begin(), shape.choices.end());
    all.endings.insert(all.endings.end(), shape.endings.begin(), shape.endings.end());
    anyFile = anyFile || (shape.kind == Kind::File && shape.endings.empty());
  }
  if (anyFile) all.endings.clear();
  return all;
}

std::string shellQuoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text)
    result += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return result + "'";
}

std::string namesOf(const std::vector<const CLI::App*>& commands) {
  std::vector<std::string> names;
  for (const CLI::App* command : commands)
    names.push_back(command->get_name());
  return joined(names, " ");
}

}  // namespace vellumtide::cli
