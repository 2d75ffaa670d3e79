// The examples that end the help of each command and the manual page.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>

namespace vellumtide::cli {

// Lines of a shell, remarks among them, for the command at a path such as "project render"; "" when
// there are none. The tests run them in a folder that holds photo.png, in.0001.exr to in.0010.exr
// and the example programs.
std::string_view examplesOf(std::string_view path);

// Puts the examples below the help of every command.
void addExamples(CLI::App& app);

}  // namespace vellumtide::cli
