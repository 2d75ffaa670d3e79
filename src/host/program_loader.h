#pragma once

#include <string>

#include "aeapi/effect_data.h"
#include "host/global_data.h"

namespace vellumtide {

// Makes sure that the program file at `path` (UTF-8) is in the cache: reads, parses and builds it
// unless it is there. The last character of the path tells graphs (g, G) from kernels (k). With
// `report`, what happened is shown in the Info panel. False when there is no usable program; a
// device that cannot be used is said on the debug channel. Throws the host's out of memory.
bool loadProgram(GlobalData& globalData, PF_InData* inData, const std::string& path, bool report);

// Whether the program of a path was not built, although its file may be good, because the device
// could not be used.
bool isUnbuilt(const GlobalData& globalData, const std::string& path);

}  // namespace vellumtide
