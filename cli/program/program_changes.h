// What a new version of a program file means for those who use it.
#pragma once

#include <string>
#include <vector>

#include "cli/program/program_file.h"

namespace vellumtide::cli {

// A line for each difference in name, version, inputs (by their place, as images are given) and
// parameters (by their name), such as
//   parameter "amount": default 0.5 -> 0.8, to 1 -> 2
// Empty when they can be used in the same way, whatever they compute.
std::vector<std::string> programChanges(const Program& before, const Program& after);

}  // namespace vellumtide::cli
