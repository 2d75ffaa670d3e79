#pragma once

#include <cstdint>
#include <string>

namespace vellumtide {

// The largest image that the driver can draw into, in pixels.
struct DrawLimits {
  int texture = 0;  // each side
  int viewportWidth = 0;
  int viewportHeight = 0;
};

// Of the context that is current.
DrawLimits readDrawLimits();

// Which limit an image of that size exceeds, "" when it can be drawn.
std::string exceededLimit(const DrawLimits& limits, std::uint32_t width, std::uint32_t height);

}  // namespace vellumtide
