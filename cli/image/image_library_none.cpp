#include "cli/image/image_format.h"
#include "cli/image/image_library.h"

namespace vellumtide::cli {

bool hasImageLibrary() {
  return false;
}

ImageFile readWithLibrary(const std::filesystem::path& path, ReadAs) {
  failImage(path, "cannot be read: it is not a PNG image, and this build knows no others");
}

ImageShape readShapeWithLibrary(const std::filesystem::path& path) {
  readWithLibrary(path, ReadAs::Natural);
  return {};
}

void encodeWithLibrary(const std::filesystem::path&, const std::filesystem::path& target,
                       const headless::World&, double, const WriteOptions&) {
  formatOf(target);  // knows PNG alone here
}

}  // namespace vellumtide::cli
