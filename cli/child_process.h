// This program, run once more as a process of its own, so that its crash is only a result.
#pragma once

#include <string>
#include <vector>

namespace vellumtide::cli {

struct ChildResult {
  std::string output;   // what it wrote to standard output
  std::string failure;  // "" when it ended by itself, else "ended by signal 11" or the like
};

// Runs this program with the arguments; its standard error goes nowhere. A child that takes longer
// than the limit is ended. Throws Failure (ExitStatus::Failed) when it cannot be started.
ChildResult runSelf(const std::vector<std::string>& arguments, int limitSeconds);

}  // namespace vellumtide::cli
