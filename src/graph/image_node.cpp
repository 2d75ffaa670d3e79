#include "graph/image_node.h"

#include <algorithm>

#include "gl/pixel_transfer.h"
#include "graph/pixel_format.h"

namespace vellumtide {
namespace {

GLenum readFormatOf(std::int32_t channels) {
  return channels == 4 ? GL_ABGR_EXT : transferFormatOf(channels);
}

// Only the far edge is clipped; what remains of `size` pixels placed at `offset`.
std::int64_t clippedSize(std::uint32_t size, std::int32_t offset, std::uint32_t renderSize) {
  const std::int64_t start = std::max(offset, 0);
  return size + start >= renderSize ? renderSize - start : size;
}

bool coversAll(const ImageDesc& input, const ImageDesc& output) {
  return input.pixels && input.x == 0 && input.y == 0 && input.width >= output.width &&
         input.height >= output.height;
}

void uploadPixels(const ImageDesc& input, const ImageDesc& output, GLenum type) {
  const GLenum format = transferFormatOf(input.channels);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, input.rowLength);
  if (format != GL_RGBA) glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  const std::int64_t width = clippedSize(input.width, input.x, output.width);
  const std::int64_t height = clippedSize(input.height, input.y, output.height);
  if (width <= 0 || height <= 0 || !input.pixels) return;
  glTexSubImage2D(GL_TEXTURE_2D, 0, input.x, input.y, static_cast<GLsizei>(width),
                  static_cast<GLsizei>(height), format, type, input.pixels);
}

}  // namespace

void ImageNode::evaluate(const RenderContext& context) {
  if (isUpToDate()) return;
  // Without a buffer the settings of an empty one hold: 8 bits, nothing uploaded.
  const ImageDesc none;
  const ImageDesc* found = findInput(context);
  const ImageDesc& input = found ? *found : none;

  const PixelFormat format = pixelFormatOf(input.depth);
  image.specify(format.internalFormat, context.output.width, context.output.height,
                input.channels == 0 ? GL_RGBA : transferFormatOf(input.channels), format.type);
  // Pixels that cover the whole texture leave nothing of a clear to be seen.
  if (!coversAll(input, context.output)) {
    image.clearToTransparent();
    image.bindTexture();
  }
  const ScopedChannelScale scale(input.depth == 2 ? 2.0f : 1.0f);
  uploadPixels(input, context.output, format.type);
  evaluated = true;
}

void ImageNode::readback(const RenderContext& context) {
  const ImageDesc& output = context.output;
  const GLenum type = pixelFormatOf(output.depth).type;
  const GLenum format = readFormatOf(output.channels);
  image.bindTexture();
  glPixelStorei(GL_PACK_ROW_LENGTH, output.rowLength);
  const bool isHost16Bit = type == GL_UNSIGNED_SHORT && format == GL_ABGR_EXT;
  const ScopedChannelScale scale(isHost16Bit ? 0.5f : 1.0f);
  glGetTexImage(GL_TEXTURE_2D, 0, format, type, output.pixels);
}

void ImageNode::reset() {
  image.shrink();
  evaluated = false;
}

void ImageNode::bindAsInput(GLuint program, const char* uniformName, GLint unit) {
  if (proxy) return proxy->bindAsInput(program, uniformName, unit);
  image.bindToSampler(program, uniformName, unit);
}

void ImageNode::setFilter(GLint filter) {
  if (proxy) return proxy->setFilter(filter);
  image.setFilter(filter);
}

PixelSize ImageNode::pixelSize(const RenderContext& context) const {
  if (proxy) return proxy->pixelSize(context);
  PixelSize size;
  for (const ImageDesc& input : context.inputs) {
    if (isFedBy(input)) size.x = input.pixelAspect;
  }
  return size;
}

bool ImageNode::isFedBy(const ImageDesc& input) const {
  return index >= 0 && input.index == index && input.depth && input.channels && input.width &&
         input.height && input.rowLength;
}

const ImageDesc* ImageNode::findInput(const RenderContext& context) const {
  for (const ImageDesc& input : context.inputs) {
    if (isFedBy(input)) return &input;
  }
  return nullptr;
}

}  // namespace vellumtide
