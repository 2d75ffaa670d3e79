// The export of what went wrong in building shaders since the host started.
#pragma once

#include <string>

#include "aeapi/effect_data.h"

namespace vellumtide {

// How the graphics driver names itself; null where it does not.
struct DriverStrings {
  const char* vendor = nullptr;
  const char* version = nullptr;
  const char* glslVersion = nullptr;
};

// Offers to write a log that is not empty, with the driver's identification, to a file in a folder
// the user chooses. The log is cleared only when the file was written whole. Without a log, or when
// the user declines, the Info panel says so instead. Always 0.
PF_Err exportErrorLog(PF_InData* in_data, std::string& errorLog, const DriverStrings& driver);

}  // namespace vellumtide
