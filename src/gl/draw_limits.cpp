#include "gl/draw_limits.h"

#include <algorithm>

#include "gl/gl_headers.h"

namespace vellumtide {

DrawLimits readDrawLimits() {
  DrawLimits limits;
  GLint viewport[2] = {};
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &limits.texture);
  glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
  limits.viewportWidth = viewport[0];
  limits.viewportHeight = viewport[1];
  return limits;
}

std::string exceededLimit(const DrawLimits& limits, std::uint32_t width, std::uint32_t height) {
  const auto exceeds = [](std::uint32_t size, int limit) { return size > std::int64_t{limit}; };
  if (exceeds(std::max(width, height), limits.texture)) {
    return "OpenGL's largest texture has " + std::to_string(limits.texture) + " pixels a side";
  }
  if (exceeds(width, limits.viewportWidth) || exceeds(height, limits.viewportHeight)) {
    return "OpenGL's largest viewport has " + std::to_string(limits.viewportWidth) + " x " +
           std::to_string(limits.viewportHeight) + " pixels";
  }
  return "";
}

}  // namespace vellumtide
