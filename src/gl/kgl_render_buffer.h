#pragma once

#include "gl/kgl_buffer_object.h"

namespace vellumtide {

// A renderbuffer: storage that can be drawn to but not sampled.
class kglRenderBuffer : public kglBufferObject {
 public:
  kglRenderBuffer();
  ~kglRenderBuffer() override;

  // Leaves the renderbuffer bound.
  void resize(int width, int height) override;
  void attach(const kglBufferObject& frameBuffer, GLenum attachment) override;
  void setInternalFormat(GLenum newFormat) override { format = newFormat; }
  void setType(GLenum) override {}  // renderbuffers have no pixel type

 private:
  GLenum format = GL_RGBA;
};

}  // namespace vellumtide
