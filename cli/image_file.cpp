#include "cli/image_file.h"

#include "cli/image_format.h"
#include "cli/image_library.h"
#include "cli/pending_file.h"
#include "cli/png_image.h"

namespace vellumtide::cli {

ImageFile readImageFile(const std::filesystem::path& path, ReadAs readAs) {
  return isPng(path) ? readPngFile(path, readAs) : readWithLibrary(path, readAs);
}

ImageShape readImageShape(const std::filesystem::path& path) {
  return isPng(path) ? readPngShape(path) : readShapeWithLibrary(path);
}

void encodeImageFile(const std::filesystem::path& file, const std::filesystem::path& target,
                     const headless::World& pixels, double pixelAspect,
                     const WriteOptions& options) {
  const auto encode = isPngFormat(formatOf(target)) ? encodePngFile : encodeWithLibrary;
  encode(file, target, pixels, pixelAspect, options);
}

void writeImageFile(const std::filesystem::path& path, const headless::World& pixels,
                    double pixelAspect, const WriteOptions& options) {
  checkWritable(path, options);
  PendingFile pending(path);
  encodeImageFile(pending.path(), path, pixels, pixelAspect, options);
  try {
    pending.commit();
  } catch (const std::filesystem::filesystem_error& error) {
    failImage(path, "cannot be written: " + error.code().message());
  }
}

}  // namespace vellumtide::cli
