// Where the values that a program's author means are not those that the value rules read.
#pragma once

#include <string>
#include <vector>

#include "cli/program/program_file.h"
#include "cli/program/source_place.h"

namespace vellumtide::cli {

// One default or limit of a parameter whose meaning and cells differ.
struct ValueNote {
  std::size_t parameter;  // its index in the program
  const char* key;        // "defaultValue", "minValue", "maxValue", "aePointRelativeDefaultValue"
  SourcePlace place;      // of the value in the program's file
  pbElementType type;
  ValueCells cells;
  ValueCells meant;
};

// In the order of the file.
std::vector<ValueNote> valueNotes(const Program& program);

// "defaultValue of "p" is meant as 2 each, its cells read 2,0".
std::string noteText(const ValueNote& note, const Program& program);

}  // namespace vellumtide::cli
