#include "gl/kgl_render_buffer.h"

#include "gl/gl_loader.h"

namespace vellumtide {

kglRenderBuffer::kglRenderBuffer() {
  if (glAvailable()) glGenRenderbuffersEXT(1, &id);
}

kglRenderBuffer::~kglRenderBuffer() {
  if (id) glDeleteRenderbuffersEXT(1, &id);
}

void kglRenderBuffer::resize(int width, int height) {
  glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, id);
  glRenderbufferStorageEXT(GL_RENDERBUFFER_EXT, format, width, height);
}

void kglRenderBuffer::attach(const kglBufferObject& frameBuffer, GLenum attachment) {
  glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, frameBuffer.getId());
  glFramebufferRenderbufferEXT(GL_FRAMEBUFFER_EXT, attachment, GL_RENDERBUFFER_EXT, id);
  glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
}

}  // namespace vellumtide
