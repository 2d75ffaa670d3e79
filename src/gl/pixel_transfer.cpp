#include "gl/pixel_transfer.h"

#include <initializer_list>

#include "gl/gl_headers.h"

namespace vellumtide {
namespace {

void setChannelScale(float factor) {
  for (GLenum channel : {GL_RED_SCALE, GL_GREEN_SCALE, GL_BLUE_SCALE, GL_ALPHA_SCALE}) {
    glPixelTransferf(channel, factor);
  }
}

}  // namespace

ScopedChannelScale::ScopedChannelScale(float factor) : scaled_(factor != 1.0f) {
  if (scaled_) setChannelScale(factor);
}

ScopedChannelScale::~ScopedChannelScale() {
  if (scaled_) setChannelScale(1.0f);
}

}  // namespace vellumtide
