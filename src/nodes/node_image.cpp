#include "nodes/node_image.h"

#include "gl/gl_loader.h"

namespace vellumtide {

NodeImage::NodeImage() {
  if (!glAvailable()) return;
  texture_.setParameter(GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
  texture_.setParameter(GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
  texture_.setParameter(GL_TEXTURE_MIN_FILTER, filter_);
  texture_.setParameter(GL_TEXTURE_MAG_FILTER, filter_);
  shrink();
  texture_.attach(framebuffer_, GL_COLOR_ATTACHMENT0_EXT);
}

void NodeImage::specify(GLenum internalFormat, std::uint32_t width, std::uint32_t height,
                        GLenum format, GLenum type) {
  texture_.specify(internalFormat, width, height, format, type);
  size_ = {width, height};
  shrunk_ = false;
}

void NodeImage::shrink() {
  // Of thousands of nodes few may have been drawn, and new storage makes the driver look at all
  // framebuffers.
  if (shrunk_) return;
  specify(GL_RGBA8, 1, 1, GL_BGRA, GL_UNSIGNED_BYTE);
  shrunk_ = true;
}

void NodeImage::bindForDrawing() const {
  framebuffer_.bind();
  glDrawBuffer(GL_COLOR_ATTACHMENT0_EXT);
}

void NodeImage::clearToTransparent() {
  glUseProgram(0);
  texture_.attach(framebuffer_, GL_COLOR_ATTACHMENT0_EXT);
  bindForDrawing();
  glDisable(GL_DEPTH_TEST);
  glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
  glClear(GL_COLOR_BUFFER_BIT);
  unbind();
}

void NodeImage::setFilter(GLint filter) {
  if (filter == filter_) return;
  filter_ = filter;
  texture_.setParameter(GL_TEXTURE_MIN_FILTER, filter);
  texture_.setParameter(GL_TEXTURE_MAG_FILTER, filter);
}

void NodeImage::bindToSampler(GLuint program, const char* uniformName, GLint unit) const {
  glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
  glEnable(GL_TEXTURE_2D);
  texture_.bind();
  glUniform1i(glGetUniformLocation(program, uniformName), unit);
  glActiveTexture(GL_TEXTURE0);
}

}  // namespace vellumtide
