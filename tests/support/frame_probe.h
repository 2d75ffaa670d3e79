// Looks into the module's own GL context while it draws a frame.
#pragma once

#include <cstdint>

#include "headless/host.h"

namespace vellumtide::end_to_end {

// What one frame did. Works through the parameter callbacks, which the module calls in its own
// context before the first and after the last node: the program needs a bound parameter.
struct FrameProbe {
  uint64_t samples = 0;   // that draws have passed: frame size times the number of draws
  int textures = 0;       // texture names alive after the frame
  int largeTextures = 0;  // those of them with more than one texel
  bool finished = false;  // both callbacks were seen
};

// Render options that fill a probe, which must outlive the render.
headless::RenderOptions probed(FrameProbe& probe, headless::RenderOptions options = {});

}  // namespace vellumtide::end_to_end
