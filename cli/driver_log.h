#pragma once

#include <string>

#include "headless/host.h"

namespace vellumtide::cli {

// The driver's identification and the errors it gave while building shaders, a text of several
// lines as the module exports it from its about box; "" when there were none. The host's
// queues of answers are used and its Info panel gains lines.
std::string exportDriverLog(headless::Host& host, headless::Effect& effect);

}  // namespace vellumtide::cli
