// Programs from dice: kernels, graphs, and files that are neither. What a kernel draws is
// determined to the last bit but for the filter's weights: sums of at most full weight, nothing
// that jumps on what was sampled.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tests/scenarios/dice.h"
#include "tests/scenarios/scenario.h"

namespace vellumtide::scenarios {

struct KernelText {
  std::string name;
  std::vector<std::string> inputs;
  std::vector<std::pair<std::string, std::string>> parameters;  // type and name
  std::vector<ProgramLine> lines;
};

KernelText writeKernel(Dice& dice, const std::string& name);
std::vector<ProgramLine> writeGraph(Dice& dice);
// Whatever may lie under a program's name: truncated, spliced, binary, empty, very large.
ProgramFile writeFile(Dice& dice, int number);

// Letters, digits and "_", 2 to 100 bytes; the first two tell it from other names.
std::string identifier(Dice& dice, char first);
// 0 to 100 bytes of any encoding, without quotes and line ends.
std::string anyText(Dice& dice);
// The metadata of a parameter as keys and values; values in kernel syntax, or as graphs have them.
std::vector<std::pair<std::string, std::string>> metadata(Dice& dice, const std::string& type,
                                                          bool inGraph);

}  // namespace vellumtide::scenarios
