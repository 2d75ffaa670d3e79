// Pixels between the host's buffers and the image that GL has bound. Only pixels that lie inside
// both are touched, whatever the buffer's place, size and row bytes are.
#pragma once

#include "gl/gl_headers.h"
#include "nodes/render_context.h"

namespace vellumtide {

struct ImageSize {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  bool operator==(const ImageSize&) const = default;
};

// Whether a buffer's pixels lie over all of an image.
bool coversImage(const ImageDesc& buffer, const ImageSize& image);

// Into the bound 2D texture, at the buffer's place in it.
void uploadBuffer(const ImageDesc& buffer, const ImageSize& image);

// From the image that draws and reads go to, at the buffer's place in it; what lies beyond the
// image becomes transparent black. The format has as many channels as the buffer's pixels.
void readBuffer(const ImageDesc& buffer, GLenum format, const ImageSize& image);

// Every pixel of the buffer becomes transparent black.
void clearBuffer(const ImageDesc& buffer);

}  // namespace vellumtide
