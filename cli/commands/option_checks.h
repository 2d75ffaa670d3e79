// What the parser checks of an option's value, in messages that say what was expected.
#pragma once

#include <CLI/CLI.hpp>

namespace vellumtide::cli {

// "abc is no whole number from 1 to 64".
CLI::Validator wholeNumber(int least, int most);

}  // namespace vellumtide::cli
