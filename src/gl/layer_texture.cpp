#include "gl/layer_texture.h"

#include "gl/gl_report.h"
#include "gl/pixel_transfer.h"

namespace vellumtide {
namespace {

GLint internalFormatFor(GLenum type) {
  if (type == GL_UNSIGNED_SHORT) return GL_RGBA16;
  if (type == GL_FLOAT) return GL_RGBA32F_ARB;
  return GL_RGBA;
}

}  // namespace

void setUpLayerSampling(GLenum target, GLuint texture) {
  constexpr struct {
    GLenum name;
    GLint value;
  } kParameters[] = {{GL_TEXTURE_WRAP_S, GL_CLAMP},
                     {GL_TEXTURE_WRAP_T, GL_CLAMP},
                     {GL_TEXTURE_MAG_FILTER, GL_LINEAR},
                     {GL_TEXTURE_MIN_FILTER, GL_LINEAR}};
  for (const auto& parameter : kParameters) {
    glBindTexture(target, texture);
    glTexParameteri(target, parameter.name, parameter.value);
  }
}

void setUpLayerTexture(GLenum target, GLuint texture) {
  setUpLayerSampling(target, texture);
  checkGLError();
}

void uploadLayer(GLenum target, GLuint texture, const PF_EffectWorld& image, GLenum type,
                 int bytesPerPixel) {
  if (!image.data) return;
  glBindTexture(target, texture);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, image.rowbytes / bytesPerPixel);
  const ScopedChannelScale scale(type == GL_UNSIGNED_SHORT ? 2.0f : 1.0f);
  checkGLError();
  glTexImage2D(target, 0, internalFormatFor(type), image.width, image.height, 0, GL_ABGR_EXT, type,
               image.data);
  checkGLError();
}

}  // namespace vellumtide
