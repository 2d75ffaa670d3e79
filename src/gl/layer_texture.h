#pragma once

#include "aeapi/params.h"
#include "gl/gl_headers.h"

namespace vellumtide {

// Plain helpers for textures of host layers, given as a texture name and its target.

// Clamped wrapping and linear filtering; reports the GL error state once afterwards.
void setUpLayerTexture(GLenum target, GLuint texture);
// The same without the report.
void setUpLayerSampling(GLenum target, GLuint texture);

// Uploads a host image (see kglTextureBuffer::upload) with an internal format that follows the
// pixel type: 16 bits, 32-bit float or 8 bits a channel. Does nothing without pixel data.
void uploadLayer(GLenum target, GLuint texture, const PF_EffectWorld& image, GLenum type,
                 int bytesPerPixel);

}  // namespace vellumtide
