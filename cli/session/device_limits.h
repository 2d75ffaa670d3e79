#pragma once

#include "aeapi/aeapi.h"

namespace vellumtide::cli {

// Whether the GL device takes a picture of that size and format as a texture. Pictures that every
// device takes are not asked about; without a device the answer is yes, and the module will say
// what is wrong.
bool deviceTakes(int width, int height, PF_PixelFormat format);

}  // namespace vellumtide::cli
