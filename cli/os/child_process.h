// Programs run as processes of their own: this one once more, so that its crash is only a result,
// and tools that the system has.
#pragma once

#include <string>
#include <vector>

namespace vellumtide::cli {

struct ChildResult {
  std::string output;   // what it wrote to standard output
  std::string failure;  // "" when it ended by itself, else "ended by signal 11" or the like
  int status = 0;       // its exit status when it ended by itself
};

// Runs this program with the arguments; its standard error goes nowhere. A child that takes longer
// than the limit is ended. Throws Failure (ExitStatus::Failed) when it cannot be started.
ChildResult runSelf(const std::vector<std::string>& arguments, int limitSeconds);

// The same with a program that is looked up where the system keeps its programs.
ChildResult runTool(const std::string& program, const std::vector<std::string>& arguments,
                    int limitSeconds);

// Ends the child that is running, if there is one, whose run then never returns; for a process that
// is about to end.
void endChildProcess();

}  // namespace vellumtide::cli
