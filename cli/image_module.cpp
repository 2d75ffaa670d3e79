#include "cli/image_module.h"

// The one function that the module shows.
extern "C" [[gnu::visibility("default")]] const vellumtide::cli::ImageFunctions*
vellumtideImageFunctions() {
  using namespace vellumtide::cli;
  static constexpr ImageFunctions functions{&readImageFile, &readImageShape, &encodeImageFile};
  return &functions;
}
