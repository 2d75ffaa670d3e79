#include "nodes/buffer_transfer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "nodes/pixel_format.h"

namespace vellumtide {
namespace {

std::int64_t bytesPerPixel(const ImageDesc& buffer) {
  const GLenum format = transferFormatOf(buffer.channels);
  const int channels = format == GL_RED ? 1 : format == GL_RGB ? 3 : 4;
  const GLenum type = pixelFormatOf(buffer.depth).type;
  return channels * (type == GL_FLOAT ? 4 : type == GL_UNSIGNED_SHORT ? 2 : 1);
}

std::int64_t rowBytesOf(const ImageDesc& buffer) {
  return buffer.rowBytes ? buffer.rowBytes : buffer.rowLength * bytesPerPixel(buffer);
}

// Pixels of a row that lie in front of the next one.
std::int64_t columnsOf(const ImageDesc& buffer) {
  const std::int64_t room = std::abs(rowBytesOf(buffer)) / bytesPerPixel(buffer);
  return std::min<std::int64_t>(buffer.width, room);
}

// The part of a buffer that lies inside an image.
struct Part {
  std::int64_t x, y;  // of its first pixel, in the image
  std::int64_t width, height;
  bool isWholeBuffer;

  bool empty() const { return width <= 0 || height <= 0; }
};

Part partInside(const ImageDesc& buffer, const ImageSize& image) {
  const std::int64_t left = buffer.x, top = buffer.y, columns = columnsOf(buffer);
  Part part{std::max<std::int64_t>(left, 0), std::max<std::int64_t>(top, 0), 0, 0, false};
  part.width = std::min<std::int64_t>(left + columns, image.width) - part.x;
  part.height = std::min<std::int64_t>(top + buffer.height, image.height) - part.y;
  part.isWholeBuffer = part.width == buffer.width && part.height == buffer.height;
  return part;
}

// GL counts from row to row in pixels, forwards.
bool isRowLength(const ImageDesc& buffer) {
  return buffer.rowLength > 0 && rowBytesOf(buffer) == buffer.rowLength * bytesPerPixel(buffer);
}

unsigned char* pixelAt(const ImageDesc& buffer, std::int64_t column, std::int64_t row) {
  return static_cast<unsigned char*>(buffer.pixels) + row * rowBytesOf(buffer) +
         column * bytesPerPixel(buffer);
}

// Runs transfer(y, height, pixels) over a part, at once where GL can step over the rows.
template <class Transfer>
void forRows(const ImageDesc& buffer, const Part& part, GLenum rowLengthName, Transfer transfer) {
  const std::int64_t column = part.x - buffer.x, row = part.y - buffer.y;
  if (isRowLength(buffer)) {
    glPixelStorei(rowLengthName, buffer.rowLength);
    return transfer(part.y, part.height, pixelAt(buffer, column, row));
  }
  glPixelStorei(rowLengthName, 0);
  for (std::int64_t i = 0; i < part.height; ++i)
    transfer(part.y + i, 1, pixelAt(buffer, column, row + i));
}

// Four channels keep every row on the default alignment of 4 bytes.
void setAlignment(GLenum name, const ImageDesc& buffer) {
  if (transferFormatOf(buffer.channels) != GL_RGBA) glPixelStorei(name, 1);
}

}  // namespace

bool coversImage(const ImageDesc& buffer, const ImageSize& image) {
  if (!buffer.pixels || buffer.x > 0 || buffer.y > 0) return false;
  const Part part = partInside(buffer, image);
  return part.width == image.width && part.height == image.height;
}

void uploadBuffer(const ImageDesc& buffer, const ImageSize& image) {
  const Part part = partInside(buffer, image);
  if (part.empty() || !buffer.pixels) return;
  setAlignment(GL_UNPACK_ALIGNMENT, buffer);
  const GLenum format = transferFormatOf(buffer.channels);
  const GLenum type = pixelFormatOf(buffer.depth).type;
  forRows(buffer, part, GL_UNPACK_ROW_LENGTH,
          [&](std::int64_t y, std::int64_t height, const void* pixels) {
            glTexSubImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(part.x), static_cast<GLint>(y),
                            static_cast<GLsizei>(part.width), static_cast<GLsizei>(height), format,
                            type, pixels);
          });
}

void readBuffer(const ImageDesc& buffer, GLenum format, const ImageSize& image) {
  const Part part = partInside(buffer, image);
  if (!part.isWholeBuffer) clearBuffer(buffer);
  if (part.empty() || !buffer.pixels) return;
  setAlignment(GL_PACK_ALIGNMENT, buffer);
  const GLenum type = pixelFormatOf(buffer.depth).type;
  forRows(buffer, part, GL_PACK_ROW_LENGTH, [&](std::int64_t y, std::int64_t height, void* pixels) {
    glReadPixels(static_cast<GLint>(part.x), static_cast<GLint>(y),
                 static_cast<GLsizei>(part.width), static_cast<GLsizei>(height), format, type,
                 pixels);
  });
}

void clearBuffer(const ImageDesc& buffer) {
  if (!buffer.pixels) return;
  const auto rowBytes = static_cast<std::size_t>(columnsOf(buffer) * bytesPerPixel(buffer));
  for (std::int64_t row = 0; row < buffer.height; ++row)
    std::memset(pixelAt(buffer, 0, row), 0, rowBytes);
}

}  // namespace vellumtide
