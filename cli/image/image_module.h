// The door between the program and the module that holds the image library. The library brings
// some two hundred shared objects along, so that loading it takes longer than most commands that
// need no images; the program loads it when the first image is read or written.
#pragma once

#include "cli/image/image_library.h"
#include "cli/image/picture_drawing.h"

namespace vellumtide::cli {

struct ImageFunctions {
  decltype(&readWithLibrary) read;
  decltype(&readShapeWithLibrary) readShape;
  decltype(&encodeWithLibrary) encode;
  decltype(&cli::drawText) drawText;
  decltype(&scaledPicture) scale;
};

inline constexpr const char* kImageModuleFile = "VellumtideImages.so";
inline constexpr const char* kImageModuleEntry = "vellumtideImageFunctions";

// What the module's entry point is.
using ImageModuleEntry = const ImageFunctions*();

}  // namespace vellumtide::cli
