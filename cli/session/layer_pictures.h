// The images of a composition's layers, read together.
#pragma once

#include <optional>
#include <vector>

#include "cli/image/image_file.h"
#include "cli/session/render_session.h"

namespace vellumtide::cli {

struct LayerPictures {
  std::vector<LayerPicture> pictures;
  PF_PixelFormat format = PF_PixelFormat_ARGB32;  // what to render in: the deepest of the images'
  WriteOptions write;                             // how to store a result as the first image was
};

// Where a layer's picture comes from: the file, or transparent black of the shape of that file.
struct LayerSource {
  std::filesystem::path file;
  bool isBlack = false;
};

// Reads the files in order, converted to the format. `depth` (8, 16 or 32) overrides the depth that
// they ask for.
LayerPictures readPictures(const std::vector<LayerSource>& sources, std::optional<int> depth);

// Throws Failure (ExitStatus::Image) for a picture that the GL device cannot hold at 1 /
// `downsample` of its size; the module would leave the result empty without a word.
void requireRoom(const headless::World& pixels, PF_PixelFormat format, int downsample);

}  // namespace vellumtide::cli
