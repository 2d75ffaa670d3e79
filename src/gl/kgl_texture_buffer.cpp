#include "gl/kgl_texture_buffer.h"

#include "gl/gl_loader.h"
#include "gl/gl_report.h"
#include "gl/layer_texture.h"
#include "gl/pixel_transfer.h"

namespace vellumtide {

kglTextureBuffer::kglTextureBuffer(GLenum textureTarget) : target(textureTarget) {
  if (glAvailable()) glGenTextures(1, &id);
}

kglTextureBuffer::~kglTextureBuffer() {
  if (id) glDeleteTextures(1, &id);
}

void kglTextureBuffer::setUpSampling() {
  setUpLayerSampling(target, id);
}

void kglTextureBuffer::setParameter(GLenum name, GLint value) {
  bind();
  glTexParameteri(target, name, value);
}

void kglTextureBuffer::setImage(std::uint32_t newLevel, GLenum newInternalFormat,
                                std::uint32_t newWidth, std::uint32_t newHeight,
                                std::uint32_t newBorder, GLenum newFormat, GLenum newType,
                                const void* pixels) {
  record(newLevel, newInternalFormat, newWidth, newHeight, newBorder, newFormat, newType);
  bind();
  if (target != GL_TEXTURE_2D) return;
  checkGLError();
  specifyRecorded(pixels);
  checkGLError();
}

void kglTextureBuffer::specify(GLenum newInternalFormat, std::uint32_t newWidth,
                               std::uint32_t newHeight, GLenum newFormat, GLenum newType) {
  record(level, newInternalFormat, newWidth, newHeight, border, newFormat, newType);
  bind();
  if (target == GL_TEXTURE_2D) specifyRecorded(nullptr);
}

void kglTextureBuffer::upload(const PF_EffectWorld& image, GLenum newType, int bytesPerPixel) {
  bind();
  glPixelStorei(GL_UNPACK_ROW_LENGTH, image.rowbytes / bytesPerPixel);
  const ScopedChannelScale scale(newType == GL_UNSIGNED_SHORT ? 2.0f : 1.0f);
  setImage(0, GL_RGBA, static_cast<std::uint32_t>(image.width),
           static_cast<std::uint32_t>(image.height), 0, GL_ABGR_EXT, newType, image.data);
}

void kglTextureBuffer::resize(int newWidth, int newHeight) {
  setImage(level, internalFormat, static_cast<std::uint32_t>(newWidth),
           static_cast<std::uint32_t>(newHeight), border, format, type, nullptr);
}

void kglTextureBuffer::attach(const kglBufferObject& frameBuffer, GLenum attachment) {
  glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, frameBuffer.getId());
  const auto mipLevel = static_cast<GLint>(level);
  if (target == GL_TEXTURE_1D) {
    glFramebufferTexture1DEXT(GL_FRAMEBUFFER_EXT, attachment, GL_TEXTURE_1D, id, mipLevel);
  } else if (target == GL_TEXTURE_2D) {
    glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, attachment, GL_TEXTURE_2D, id, mipLevel);
  } else if (target == GL_TEXTURE_3D) {
    glFramebufferTexture3DEXT(GL_FRAMEBUFFER_EXT, attachment, GL_TEXTURE_3D, id, mipLevel,
                              static_cast<GLint>(zOffset));
  }
  glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
}

void kglTextureBuffer::bind() const {
  glBindTexture(target, id);
}

void kglTextureBuffer::record(std::uint32_t newLevel, GLenum newInternalFormat,
                              std::uint32_t newWidth, std::uint32_t newHeight,
                              std::uint32_t newBorder, GLenum newFormat, GLenum newType) {
  level = newLevel;
  internalFormat = newInternalFormat;
  width = newWidth;
  height = newHeight;
  border = newBorder;
  format = newFormat;
  type = newType;
}

void kglTextureBuffer::specifyRecorded(const void* pixels) {
  // GL refuses a depth image in any other pixel format than its own.
  const bool isDepth = internalFormat == GL_DEPTH_COMPONENT;
  const GLenum pixelFormat = isDepth ? GL_DEPTH_COMPONENT : format;
  glTexImage2D(GL_TEXTURE_2D, static_cast<GLint>(level), static_cast<GLint>(internalFormat),
               static_cast<GLsizei>(width), static_cast<GLsizei>(height),
               static_cast<GLint>(border), pixelFormat, type, pixels);
}

}  // namespace vellumtide
