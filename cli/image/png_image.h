// PNG files, read and written by libpng alone, which is there at once: the larger image library
// takes longer to load than a small picture takes to render.
#pragma once

#include "cli/image/image_file.h"

namespace vellumtide::cli {

// Whether the file begins as a PNG file does. A Failure when it cannot be opened.
bool isPng(const std::filesystem::path& path);

// As the functions of the same names in image_file.h.
ImageFile readPngFile(const std::filesystem::path& path, ReadAs readAs);
ImageShape readPngShape(const std::filesystem::path& path);
void encodePngFile(const std::filesystem::path& file, const std::filesystem::path& target,
                   const headless::World& pixels, double pixelAspect, const WriteOptions& options);

}  // namespace vellumtide::cli
