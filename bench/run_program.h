// A program run as a process of its own, and what it took.
#pragma once

#include <string>
#include <vector>

namespace vellumtide::bench {

struct ProgramRun {
  double milliseconds = 0;  // wall clock, the start of the process included
  long peakKilobytes = 0;   // the largest resident memory
  int status = 0;
};

// Standard output goes nowhere. Throws std::runtime_error when the program cannot be started.
ProgramRun runProgram(const std::vector<std::string>& arguments);

double median(std::vector<double> values);

}  // namespace vellumtide::bench
