// Making a contact sheet: from the options of the command to the written picture.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/sheet/sheet_cell_picture.h"

namespace vellumtide::cli {

struct SheetJob {
  std::vector<std::string> sources;   // programs, or images shown as they are
  std::vector<std::string> inputs;    // images for every program, as many as it takes
  std::vector<std::string> sweeps;    // NAME=VALUES, see parseSweep: across, then down
  std::vector<std::string> settings;  // NAME=VALUE
  std::string output;
  std::optional<int> width, height;  // of a blank layer, when there are no inputs
  std::optional<int> depth;          // 8, 16 or 32; none: the deepest of the inputs'
  std::optional<int> columns;
  std::optional<std::string> title;
  CellOptions cell;
  std::string font, module;
  bool json = false;  // lists the cells on standard output
};

// One source with up to two sweeps, or several sources with up to one. A cell that fails says so in
// words, and on standard error; the Failure at the end carries their exit status (Failed when they
// have several). When every cell fails no sheet is written. Throws Failure.
void makeSheet(const SheetJob& job);

}  // namespace vellumtide::cli
