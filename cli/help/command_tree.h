// The commands and options of the program as its help, manual page and completions show them.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

namespace vellumtide::cli {

// What is hidden (an empty group) is in none of these.
std::vector<const CLI::App*> commandsOf(const CLI::App& app);
std::vector<const CLI::Option*> optionsOf(const CLI::App& command);    // those with a name
std::vector<const CLI::Option*> argumentsOf(const CLI::App& command);  // those with a place

// The command at a path such as "project render"; null when there is none.
CLI::App* findCommand(CLI::App& app, const std::string& path);

// "-o" and "--output" of one option.
std::vector<std::string> flagsOf(const CLI::Option& option);

bool takesValue(const CLI::Option& option);

// The values of an option that takes one of a list; empty for the others.
std::vector<std::string> choicesOf(const CLI::Option& option);

// How help writes the value that an option takes: "FILE", "N", "8|16|32"; "" for a flag.
std::string valueName(const CLI::Option& option);

// Calls action("project render", command) for each command that does something, in their order.
void forEachCommand(const CLI::App& app,
                    const std::function<void(const std::string&, const CLI::App&)>& action);

// The texts with `between` between each two.
std::string joined(const std::vector<std::string>& texts, const std::string& between);

}  // namespace vellumtide::cli
