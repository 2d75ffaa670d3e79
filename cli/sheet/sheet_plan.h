// What a sheet is to hold, before anything is rendered: its sources and the cells of each.
#pragma once

#include "cli/program/program_file.h"
#include "cli/sheet/sheet_job.h"
#include "cli/sheet/sheet_picture.h"

namespace vellumtide::cli {

struct PlannedCell {
  std::size_t source = 0;
  std::vector<SheetLabel> settings;  // of the sweeps, for this cell alone
  std::size_t place = 0;             // in the sheet's cells
};

struct SheetPlan {
  Sheet sheet;                     // with labels and places, without pictures
  std::vector<PlannedCell> cells;  // those of one source follow each other
};

// Whether the file name is that of a program (.pbk or .pbg), not of an image.
bool isProgramName(const std::string& name);

// Throws Failure (ExitStatus::Usage) for a sheet that cannot be, and as readProgram and parseSweep
// do. `cellShape` is the likely height of a cell over its width, for the number of columns.
SheetPlan planSheet(const SheetJob& job, double cellShape);

}  // namespace vellumtide::cli
