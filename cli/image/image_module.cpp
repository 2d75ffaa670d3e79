#include "cli/image/image_module.h"

namespace vellumtide::cli {

bool hasImageLibrary() {
  return true;
}

}  // namespace vellumtide::cli

// The one function that the module shows.
extern "C" [[gnu::visibility("default")]] const vellumtide::cli::ImageFunctions*
vellumtideImageFunctions() {
  using namespace vellumtide::cli;
  static constexpr ImageFunctions functions{&readWithLibrary, &readShapeWithLibrary,
                                            &encodeWithLibrary, &drawText, &scaledPicture};
  return &functions;
}
