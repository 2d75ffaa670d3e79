// What help calls the values of options, and the headings it puts options under.
#pragma once

#include <CLI/CLI.hpp>

namespace vellumtide::cli {

void nameValues(CLI::App& app);

}  // namespace vellumtide::cli
