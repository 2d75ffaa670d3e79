#include "gl/kgl_render_target.h"

#include "gl/kgl_render_buffer.h"
#include "gl/kgl_texture_buffer.h"

namespace vellumtide {
namespace {

std::unique_ptr<kglBufferObject> makeAttachment(AttachmentKind kind) {
  if (kind == AttachmentKind::RenderBuffer) {
    return std::unique_ptr<kglBufferObject>(newOrThrow<kglRenderBuffer>());
  }
  std::unique_ptr<kglTextureBuffer> texture(newOrThrow<kglTextureBuffer>());
  texture->setUpSampling();
  return texture;
}

}  // namespace

kglRenderTarget::kglRenderTarget(AttachmentKind colorKind, AttachmentKind depthKind)
    : color(makeAttachment(colorKind)), depth(makeAttachment(depthKind)) {
  color->setInternalFormat(GL_RGBA32F_ARB);
  color->setType(GL_UNSIGNED_BYTE);
  color->resize(1, 1);
  color->attach(*this, GL_COLOR_ATTACHMENT0_EXT);
  depth->setInternalFormat(GL_DEPTH_COMPONENT);
  depth->setType(GL_FLOAT);
  depth->resize(1, 1);
  depth->attach(*this, GL_DEPTH_ATTACHMENT_EXT);
}

kglRenderTarget::~kglRenderTarget() {
  color.reset();
  depth.reset();
}

void kglRenderTarget::resize(int width, int height, GLenum type) {
  color->setType(type);
  color->resize(width, height);
  depth->setType(type);
  depth->resize(width, height);
}

}  // namespace vellumtide
