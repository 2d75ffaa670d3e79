#pragma once

#include <string>

namespace vellumtide {

// Reads one pending GL error and sends its text to the ignored message channel. Returns its code,
// 0 when there is none.
unsigned sendGLError();

// What an error code means.
std::string glErrorText(unsigned code);

// Reads all pending GL errors; whether there were any.
bool discardGLErrors();

}  // namespace vellumtide
