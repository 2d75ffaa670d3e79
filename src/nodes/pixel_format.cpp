#include "nodes/pixel_format.h"

namespace vellumtide {

PixelFormat pixelFormatOf(std::int32_t depth) {
  if (depth == 4) return {GL_RGBA32F_ARB, GL_FLOAT};
  if (depth == 2 || depth == 3) return {GL_RGBA16, GL_UNSIGNED_SHORT};
  return {GL_RGBA8, GL_UNSIGNED_BYTE};
}

GLenum transferFormatOf(std::int32_t channels) {
  if (channels <= 1) return GL_RED;
  return channels == 2 ? GL_RGB : GL_RGBA;
}

}  // namespace vellumtide
