#include "cli/session/device_limits.h"

#include <GL/glew.h>

#include <algorithm>
#include <cstdint>

#include "headless/host_gl_context.h"
#include "headless/world.h"

namespace vellumtide::cli {
namespace {

constexpr int kSafeSide = 8192;
constexpr std::int64_t kSafeBytes = std::int64_t{256} << 20;

GLint internalFormat(PF_PixelFormat format) {
  if (format == PF_PixelFormat_ARGB64) return GL_RGBA16;
  return format == PF_PixelFormat_ARGB128 ? GL_RGBA32F_ARB : GL_RGBA8;
}

}  // namespace

bool deviceTakes(int width, int height, PF_PixelFormat format) {
  const std::int64_t bytes = std::int64_t{width} * height * headless::bytesPerPixel(format);
  if (std::max(width, height) <= kSafeSide && bytes <= kSafeBytes) return true;
  headless::HostGlContext context;
  if (!context.usable()) return true;
  context.makeCurrent();
  glTexImage2D(GL_PROXY_TEXTURE_2D, 0, internalFormat(format), width, height, 0, GL_RGBA, GL_FLOAT,
               nullptr);
  GLint taken = 0;
  glGetTexLevelParameteriv(GL_PROXY_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &taken);
  context.release();
  return taken == width;
}

}  // namespace vellumtide::cli
