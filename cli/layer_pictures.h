// The images of a composition's layers, read together.
#pragma once

#include <optional>
#include <vector>

#include "cli/image_file.h"
#include "cli/render_session.h"

namespace vellumtide::cli {

struct LayerPictures {
  std::vector<LayerPicture> pictures;
  PF_PixelFormat format = PF_PixelFormat_ARGB32;  // what to render in: the deepest of the images'
  WriteOptions write;                             // how to store a result as the first image was
};

// Reads the files in order. `depth` (8, 16 or 32) overrides the depth that they ask for.
LayerPictures readPictures(const std::vector<std::filesystem::path>& files,
                           std::optional<int> depth);

// Throws Failure (ExitStatus::Image) for a picture that the GL device cannot hold at 1 /
// `downsample` of its size; the module would leave the result empty without a word.
void requireRoom(const headless::World& pixels, PF_PixelFormat format, int downsample);

}  // namespace vellumtide::cli
