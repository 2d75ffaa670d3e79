// Completion scripts for shells, written from the commands and options themselves.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace vellumtide::cli {

// What may stand where an option or an argument takes a value.
struct ValueShape {
  enum class Kind { None, Choice, File, Folder, Control, Command };

  Kind kind = Kind::None;
  std::vector<std::string> choices;
  std::vector<std::string> endings;  // of files; empty for any file
  char mark = '=';                   // what follows the label of a control
};

ValueShape shapeOf(const CLI::Option& option);

// What the arguments of a command may be, all of them together.
ValueShape shapeOfArguments(const CLI::App& command);

// In single quotes, as every one of the shells takes it.
std::string shellQuoted(const std::string& text);

std::string namesOf(const std::vector<const CLI::App*>& commands);  // between blanks

std::string bashCompletion(const CLI::App& app);
std::string zshCompletion(const CLI::App& app);
std::string fishCompletion(const CLI::App& app);

}  // namespace vellumtide::cli
