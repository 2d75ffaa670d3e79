#include "gl/kgl_frame_buffer.h"

#include "gl/gl_loader.h"

namespace vellumtide {

kglFrameBuffer::kglFrameBuffer() {
  if (glAvailable()) glGenFramebuffersEXT(1, &id);
}

kglFrameBuffer::~kglFrameBuffer() {
  if (id) glDeleteFramebuffersEXT(1, &id);
}

void kglFrameBuffer::detach(GLenum attachment) {
  bind();
  GLint kind = GL_NONE;
  glGetFramebufferAttachmentParameterivEXT(GL_FRAMEBUFFER_EXT, attachment,
                                           GL_FRAMEBUFFER_ATTACHMENT_OBJECT_TYPE_EXT, &kind);
  if (kind == GL_TEXTURE) {
    glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, attachment, GL_TEXTURE_2D, 0, 0);
  } else if (kind == GL_RENDERBUFFER_EXT) {
    glFramebufferRenderbufferEXT(GL_FRAMEBUFFER_EXT, attachment, GL_RENDERBUFFER_EXT, 0);
  }
  unbind();
}

void kglFrameBuffer::bind() const {
  glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, id);
}

void kglFrameBuffer::unbind() {
  glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
}

}  // namespace vellumtide
