#pragma once

#include <cstddef>

namespace vellumtide {

// The about box's picture, a PNG of 512 by 288; its bytes are built in from packaging/splash.png.
extern const unsigned char splashImage[];
extern const std::size_t splashImageSize;

}  // namespace vellumtide
