#pragma once

#include <memory>

#include "gl/kgl_frame_buffer.h"

namespace vellumtide {

// What an attachment of a render target is made of.
enum class AttachmentKind { Texture = 0, RenderBuffer = 1 };

// A framebuffer with one colour and one depth attachment, complete at 1 by 1 pixel from the start.
class kglRenderTarget : public kglFrameBuffer {
 public:
  kglRenderTarget(AttachmentKind colorKind, AttachmentKind depthKind);
  ~kglRenderTarget() override;

  // The same pixel type goes to both attachments.
  void resize(int width, int height, GLenum type);
  using kglFrameBuffer::resize;

  kglBufferObject& colorBuffer() { return *color; }
  kglBufferObject& depthBuffer() { return *depth; }

 private:
  std::unique_ptr<kglBufferObject> color;
  std::unique_ptr<kglBufferObject> depth;
};

}  // namespace vellumtide
