#pragma once

#include "aeapi/params.h"
#include "gl/kgl_buffer_object.h"

namespace vellumtide {

// A texture and the values with which its storage was last specified.
class kglTextureBuffer : public kglBufferObject {
 public:
  explicit kglTextureBuffer(GLenum textureTarget = GL_TEXTURE_2D);
  ~kglTextureBuffer() override;

  // Clamped wrapping and linear filtering without mipmaps.
  void setUpSampling();
  void setParameter(GLenum name, GLint value);

  // Records the values and, for a 2D target, specifies the image, reporting the GL error state
  // before and after. `specify` does the same for a 2D target without reports.
  void setImage(std::uint32_t newLevel, GLenum newInternalFormat, std::uint32_t newWidth,
                std::uint32_t newHeight, std::uint32_t newBorder, GLenum newFormat, GLenum newType,
                const void* pixels);
  void specify(GLenum newInternalFormat, std::uint32_t newWidth, std::uint32_t newHeight,
               GLenum newFormat, GLenum newType);

  // Uploads a host image whose rows are `image.rowbytes` apart as alpha, red, green, blue; 16-bit
  // channels (GL_UNSIGNED_SHORT) span 0 to 32768. Leaves the unpack row length set.
  void upload(const PF_EffectWorld& image, GLenum newType, int bytesPerPixel);

  void resize(int newWidth, int newHeight) override;
  void attach(const kglBufferObject& frameBuffer, GLenum attachment) override;
  void setInternalFormat(GLenum newFormat) override { internalFormat = newFormat; }
  void setType(GLenum newType) override { type = newType; }
  void bind() const;

 private:
  void record(std::uint32_t newLevel, GLenum newInternalFormat, std::uint32_t newWidth,
              std::uint32_t newHeight, std::uint32_t newBorder, GLenum newFormat, GLenum newType);
  void specifyRecorded(const void* pixels);

  std::uint32_t level = 0;
  std::uint32_t internalFormat = GL_RGBA32F_ARB;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::uint32_t border = 0;
  std::uint32_t format = GL_RGBA;
  std::uint32_t target = GL_TEXTURE_2D;
  std::uint32_t type = GL_UNSIGNED_BYTE;
  std::uint32_t zOffset = 0;  // 3D targets only
};

}  // namespace vellumtide
