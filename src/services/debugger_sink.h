#pragma once

namespace vellumtide {

// Hands one UTF-8 text to the platform's debugger output.
void writeToDebugger(const char* text);

}  // namespace vellumtide
