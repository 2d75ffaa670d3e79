#include "cli/help/command_tree.h"
#include "cli/help/completion.h"

namespace vellumtide::cli {
namespace {

using Kind = ValueShape::Kind;

// In single quotes; fish gives a backslash a meaning there.
std::string fishQuoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') result += '\\';
    result += c;
  }
  return result + "'";
}

std::string offer(const ValueShape& shape, const CLI::App& app) {
  switch (shape.kind) {
    case Kind::Choice:
      return "-x -a " + fishQuoted(joined(shape.choices, " "));
    case Kind::File:
      if (shape.endings.empty()) return "-r -F";
      return "-x -a " + fishQuoted("(__vellumtide_files " + joined(shape.endings, " ") + ")");
    case Kind::Folder:
      return "-x -a '(__fish_complete_directories)'";
    case Kind::Control:
      return "-x -a " + fishQuoted(std::string("(__vellumtide_controls ") + shape.mark + ")");
    case Kind::Command:
      return "-x -a " + fishQuoted(namesOf(commandsOf(app)));
    case Kind::None:
      break;
  }
  return "-x";
}

constexpr const char* kFunctions = R"(# Completion of vellumtide for fish.

function __vellumtide_words  # the words before this one, from the command on
    set -l words (commandline -opc)
    string join -- \n $words[2..-1]
end

function __vellumtide_at  # true behind this command
    set -l words (__vellumtide_words)
    test (count $argv) = 0; and return
    test "$words[1..$(count $argv)]" = "$argv"
end

function __vellumtide_just_at  # true when nothing but this command has been written
    test (count (__vellumtide_words)) = (count $argv); and __vellumtide_at $argv
end

function __vellumtide_files  # with these endings, and folders
    complete -C "__fish_command_without_completions "(commandline -ct) |
        string match -r '.*(?:\.(?:'(string join '|' $argv)')|/)$'
end

function __vellumtide_controls  # of the program on the command line, as the program names them
    set -l program (__vellumtide_words | string match -r '.*\.pb[kg]$')
    test -n "$program[1]"; or return
    vellumtide candidates -- $program[1] $argv[1] \
        (commandline -ct | string unescape 2>/dev/null; or commandline -ct | string trim -l -c '"\'') 2>/dev/null
end

complete -c vellumtide -f
)";

void addOptions(const CLI::App& command, const std::string& start, const CLI::App& app,
                std::string& script) {
  for (const CLI::Option* option : optionsOf(command)) {
    script += start;
    for (const std::string& name : option->get_snames())
      script += " -s " + name;
    for (const std::string& name : option->get_lnames())
      script += " -l " + name;
    if (takesValue(*option)) script += " " + offer(shapeOf(*option), app);
    script += " -d " + fishQuoted(option->get_description()) + "\n";
  }
}

std::string startAt(const std::string& function, const std::string& path) {
  return "complete -c vellumtide -n " + fishQuoted(function + (path.empty() ? "" : " " + path));
}

void addNames(const CLI::App& app, const std::string& path, std::string& script) {
  for (const CLI::App* command : commandsOf(app)) {
    script += startAt("__vellumtide_just_at", path) + " -a " + command->get_name() + " -d " +
              fishQuoted(command->get_description()) + "\n";
    if (!commandsOf(*command).empty())
      addNames(*command, path + (path.empty() ? "" : " ") + command->get_name(), script);
  }
}

}  // namespace

std::string fishCompletion(const CLI::App& app) {
  std::string script = kFunctions;
  addNames(app, "", script);
  addOptions(app, startAt("__vellumtide_just_at", ""), app, script);
  forEachCommand(app, [&](const std::string& path, const CLI::App& command) {
    const std::string start = startAt("__vellumtide_at", path);
    addOptions(command, start, app, script);
    const ValueShape shape = shapeOfArguments(command);
    if (shape.kind != Kind::None) script += start + " " + offer(shape, app) + "\n";
  });
  return script;
}

}  // namespace vellumtide::cli
