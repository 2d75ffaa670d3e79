// A parameter sweep as typed: which control, and the values it takes one after the other.
#pragma once

#include <string>
#include <vector>

#include "cli/program/program_file.h"

namespace vellumtide::cli {

struct Sweep {
  std::string name;                 // of the control, as ControlPanel takes it
  std::vector<std::string> values;  // likewise
};

// "NAME=VALUES". Between values stands "|", or "," where the control takes one number, an entry or
// a switch. In place of a value may stand A..B, five numbers from A to B; A..B/N, N numbers;
// A..BxS, numbers in steps of S. A and B may be points or vectors, except with a step. "NAME"
// alone: all entries of a pop-up, both ways of a check box, or five numbers over the range that the
// program gives. Throws Failure (ExitStatus::Usage).
Sweep parseSweep(const std::string& text, const Program& program);

}  // namespace vellumtide::cli
