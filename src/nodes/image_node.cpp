#include "nodes/image_node.h"

#include "gl/pixel_transfer.h"
#include "nodes/buffer_transfer.h"
#include "nodes/pixel_format.h"

namespace vellumtide {
namespace {

GLenum readFormatOf(std::int32_t channels) {
  return channels == 4 ? GL_ABGR_EXT : transferFormatOf(channels);
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
  if (!coversImage(input, image.size())) {
    image.clearToTransparent();
    image.bindTexture();
  }
  const ScopedChannelScale scale(input.depth == 2 ? 2.0f : 1.0f);
  uploadBuffer(input, image.size());
  evaluated = true;
}

// What glGetTexImage is said to give, kept to the buffer. Some drivers forget the scale there.
void ImageNode::readback(const RenderContext& context) {
  ImageDesc output = context.output;
  if (ImageSize{output.width, output.height} == image.size()) output.x = output.y = 0;
  image.bindForDrawing();
  glReadBuffer(GL_COLOR_ATTACHMENT0_EXT);
  const bool isHost16Bit =
      pixelFormatOf(output.depth).type == GL_UNSIGNED_SHORT && output.channels == 4;
  const ScopedChannelScale scale(isHost16Bit ? 0.5f : 1.0f);
  readBuffer(output, readFormatOf(output.channels), image.size());
  image.unbind();
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
