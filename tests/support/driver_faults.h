// A driver that fails when a test wants it to. The program that holds this stands between the
// module and EGL and OpenGL, so a test needs a host without a context of its own.
#pragma once

namespace vellumtide::end_to_end {

struct DriverFaults {
  bool noContexts = false;         // none can be made
  int refusals = 0;                // of so many attempts to make a context current; -1 for all
  bool sparesNew = false;          // contexts made meanwhile are never refused
  unsigned errorAfterDrawing = 0;  // a GL error that the next polygon leaves behind
};

DriverFaults& driverFaults();

}  // namespace vellumtide::end_to_end
