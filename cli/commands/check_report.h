// What `check` finds out about one program.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "cli/text/failure.h"

namespace vellumtide::cli {

// Loads the program through the module, on a small layer, and says what it got. Never throws for a
// program that fails: the object then holds its error. Keys: file, ok, status, error, and for a
// program that was read name, version, vendor, inputs [{name, type, slot}] and parameters [{name,
// type, slot, controls [{index, label}]}]; notes [{line, column, message}] when values mean
// something else than they read; for one whose shaders do not build errors [{file, line, column,
// severity, message, node, nodes, stage, generatedLine, generatedText}], where line and column are
// left out for what the file does not hold, node unless it is one, and stage when both say the
// same.
nlohmann::ordered_json checkProgram(const std::string& file, const std::string& module);

// The object for a program whose check did not come to its end; `failure` does not name the file.
nlohmann::ordered_json failureReport(const std::string& file, const Failure& failure);

// The object as lines for people.
std::string reportText(const nlohmann::ordered_json& report);

}  // namespace vellumtide::cli
