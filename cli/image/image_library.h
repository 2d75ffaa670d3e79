// Everything but PNG files, by the image library, where this build has one.
#pragma once

#include "cli/image/image_file.h"

namespace vellumtide::cli {

bool hasImageLibrary();

// As the functions of the same names in image_file.h.
ImageFile readWithLibrary(const std::filesystem::path& path, ReadAs readAs);
ImageShape readShapeWithLibrary(const std::filesystem::path& path);
void encodeWithLibrary(const std::filesystem::path& file, const std::filesystem::path& target,
                       const headless::World& pixels, double pixelAspect,
                       const WriteOptions& options);

}  // namespace vellumtide::cli
