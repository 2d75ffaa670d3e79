#pragma once

#include "gl/kgl_buffer_object.h"

namespace vellumtide {

// A framebuffer object. It has no storage of its own, so the storage operations do nothing.
class kglFrameBuffer : public kglBufferObject {
 public:
  kglFrameBuffer();
  ~kglFrameBuffer() override;

  void resize(int, int) override {}
  void attach(const kglBufferObject&, GLenum) override {}
  void setInternalFormat(GLenum) override {}
  void setType(GLenum) override {}
  virtual void refresh() {}

  // Takes whatever is attached at the attachment point off it.
  void detach(GLenum attachment);
  void bind() const;
  static void unbind();
};

}  // namespace vellumtide
