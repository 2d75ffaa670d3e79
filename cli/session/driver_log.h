#pragma once

#include <string>

#include "headless/host.h"

namespace vellumtide::cli {

// What the module exports from its about box.
struct DriverLog {
  std::string driver;  // how the driver names itself, on one line
  std::string errors;  // what it said while building shaders, as the module keeps it
};

// Both empty when nothing was said. The host's queues of answers are used, its Info panel gains
// lines, and the module's log is empty afterwards.
DriverLog exportDriverLog(headless::Host& host, headless::Effect& effect);

}  // namespace vellumtide::cli
