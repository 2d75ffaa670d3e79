#pragma once

namespace vellumtide {

// Reads one pending GL error and sends its text to the ignored message channel. Returns its code,
// 0 when there is none.
unsigned sendGLError();

}  // namespace vellumtide
