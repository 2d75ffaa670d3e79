#include <dlfcn.h>

#include "cli/image/image_module.h"
#include "cli/os/module_file.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {
namespace {

// Stays loaded until the process ends.
const ImageFunctions& imageFunctions() {
  static const ImageFunctions* const functions = [] {
    const std::string path = findBesideProgram(kImageModuleFile).string();
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const entry = library ? dlsym(library, kImageModuleEntry) : nullptr;
    if (!entry) {
      const char* const reason = dlerror();
      throw Failure(ExitStatus::Image, "the image library cannot be loaded: " +
                                           std::string(reason ? reason : path.c_str()));
    }
    return reinterpret_cast<ImageModuleEntry*>(entry)();
  }();
  return *functions;
}

}  // namespace

bool hasImageLibrary() {
  return true;
}

ImageFile readWithLibrary(const std::filesystem::path& path, ReadAs readAs) {
  return imageFunctions().read(path, readAs);
}

ImageShape readShapeWithLibrary(const std::filesystem::path& path) {
  return imageFunctions().readShape(path);
}

void encodeWithLibrary(const std::filesystem::path& file, const std::filesystem::path& target,
                       const headless::World& pixels, double pixelAspect,
                       const WriteOptions& options) {
  imageFunctions().encode(file, target, pixels, pixelAspect, options);
}

TextLine drawText(std::string_view text, const std::string& fontFile, int size) {
  return imageFunctions().drawText(text, fontFile, size);
}

headless::World scaledPicture(const headless::World& picture, int width, int height) {
  return imageFunctions().scale(picture, width, height);
}

}  // namespace vellumtide::cli
