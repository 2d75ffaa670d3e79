#include "cli/image/image_file.h"

#include <algorithm>
#include <fstream>

#include "cli/files/pending_file.h"
#include "cli/image/image_format.h"
#include "cli/image/image_library.h"
#include "cli/image/png_image.h"

namespace vellumtide::cli {

ImageFile readImageFile(const std::filesystem::path& path, ReadAs readAs) {
  checkReadable(path);
  return isPng(path) ? readPngFile(path, readAs) : readWithLibrary(path, readAs);
}

ImageShape readImageShape(const std::filesystem::path& path) {
  checkReadable(path);
  return isPng(path) ? readPngShape(path) : readShapeWithLibrary(path);
}

void encodeImageFile(const std::filesystem::path& file, const std::filesystem::path& target,
                     const headless::World& pixels, double pixelAspect,
                     const WriteOptions& options) {
  const auto encode = isPngFormat(formatOf(target)) ? encodePngFile : encodeWithLibrary;
  encode(file, target, pixels, pixelAspect, options);
}

bool holdsItsFormat(const std::filesystem::path& path) {
  char bytes[8] = {};
  std::ifstream(path, std::ios::binary).read(bytes, sizeof bytes);
  const std::vector<std::string_view>& starts = formatOf(path).starts;
  return std::any_of(starts.begin(), starts.end(), [&](std::string_view start) {
    return std::string_view(bytes, sizeof bytes).starts_with(start);
  });
}

void checkWritable(const std::filesystem::path& path, const WriteOptions& options) {
  writtenType(path, PF_PixelFormat_ARGB32, options);
  try {
    outputTarget(path);
  } catch (const WriteRefusal& refusal) {
    failImage(path, std::string("cannot be written: ") + refusal.what());
  }
}

void writeImageFile(const std::filesystem::path& path, const headless::World& pixels,
                    double pixelAspect, const WriteOptions& options) {
  writtenType(path, PF_PixelFormat_ARGB32, options);
  try {
    PendingFile pending(path);
    encodeImageFile(pending.path(), path, pixels, pixelAspect, options);
    pending.commit();
  } catch (const WriteRefusal& refusal) {
    failImage(path, std::string("cannot be written: ") + refusal.what());
  }
}

}  // namespace vellumtide::cli
