// GL formats for the host's buffers.
#pragma once

#include <cstdint>

#include "gl/gl_headers.h"

namespace vellumtide {

struct PixelFormat {
  GLenum internalFormat;
  GLenum type;
};

// For the depths 0 and 1 (8 bits), 2 and 3 (16 bits) and 4 (float).
PixelFormat pixelFormatOf(std::int32_t depth);

// The layout of a transfer with 0 or 1 (red), 2 (three) or 3 and 4 (four) channels.
GLenum transferFormatOf(std::int32_t channels);

}  // namespace vellumtide
