// The words of the command line before they are understood.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace vellumtide::cli {

// The arguments of main() without the program's name, in which "--name=" has become "--name" and an
// empty word: the library would take the next word for the value.
std::vector<std::string> wordsOf(int argc, char** argv);

// Makes an empty value wrong usage for every option and argument of every command, but for those
// to which it means something.
void refuseEmptyValues(CLI::App& app);

// The last value that the words give an option with this name ("--report"), "" for none.
std::string valueIn(const std::vector<std::string>& words, const std::string& name);

}  // namespace vellumtide::cli
