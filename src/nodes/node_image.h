// The texture of a node with the framebuffer that draws into it.
#pragma once

#include <cstdint>

#include "gl/kgl_frame_buffer.h"
#include "gl/kgl_texture_buffer.h"
#include "nodes/buffer_transfer.h"

namespace vellumtide {

// One texel between frames. Without loaded entry points it holds no GL objects.
class NodeImage {
 public:
  NodeImage();
  NodeImage(const NodeImage&) = delete;
  NodeImage& operator=(const NodeImage&) = delete;

  void specify(GLenum internalFormat, std::uint32_t width, std::uint32_t height, GLenum format,
               GLenum type);
  void shrink();

  // Draws go to, and reads come from, the texture until unbind.
  void bindForDrawing() const;
  void unbind() const { kglFrameBuffer::unbind(); }
  void clearToTransparent();

  // GL_LINEAR at first. Reading only at texel centres, both give the same image in exact
  // arithmetic, GL_NEAREST also where the driver's filter weights are rounded.
  void setFilter(GLint filter);

  void bindTexture() const { texture_.bind(); }
  void bindToSampler(GLuint program, const char* uniformName, GLint unit) const;
  GLuint textureName() const { return texture_.getId(); }
  // As last specified, in pixels.
  const ImageSize& size() const { return size_; }

 private:
  kglTextureBuffer texture_;
  kglFrameBuffer framebuffer_;
  ImageSize size_;
  GLint filter_ = GL_LINEAR;
  bool shrunk_ = false;
};

}  // namespace vellumtide
