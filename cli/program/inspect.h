// What a program file holds, for programs (JSON) and for people (text).
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "cli/program/program_file.h"

namespace vellumtide::cli {

// One object with its keys in a fixed order. Floats are the exact 32-bit values; those that JSON
// cannot express are null. A parameter's value that means something else than its cells has
// "meant", "line" and "column", too.
nlohmann::ordered_json inspectionJson(const Program& program);

// Name, metadata, inputs, nodes and the parameters with their controls, ranges and defaults.
std::string inspectionText(const Program& program);

}  // namespace vellumtide::cli
