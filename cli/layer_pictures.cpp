#include "cli/layer_pictures.h"

#include <algorithm>

#include "cli/device_limits.h"
#include "cli/failure.h"
#include "cli/number_text.h"
#include "cli/utf8_path.h"

namespace vellumtide::cli {

LayerPictures readPictures(const std::vector<std::filesystem::path>& files,
                           std::optional<int> depth) {
  LayerPictures result;
  int deepest = 8;
  for (const std::filesystem::path& path : files) {
    ImageFile file = readImageFile(path);
    deepest = std::max(deepest, headless::depthOfPixelFormat(file.pixels.format()));
    if (result.pictures.empty()) {
      result.write.straightAlpha = file.straightAlpha;
      result.write.preferHalf = file.sampleType == SampleType::Half;
    }
    result.pictures.push_back({std::move(file.pixels), closestRatio(file.pixelAspect),
                               utf8(std::filesystem::absolute(path))});
  }
  result.format = headless::pixelFormatOfDepth(depth.value_or(deepest));
  return result;
}

void requireRoom(const headless::World& pixels, PF_PixelFormat format, int downsample) {
  const int width = (pixels.width() + downsample - 1) / downsample;
  const int height = (pixels.height() + downsample - 1) / downsample;
  if (deviceTakes(width, height, format)) return;
  throw Failure(ExitStatus::Image, "a picture of " + std::to_string(width) + " x " +
                                       std::to_string(height) + " pixels at depth " +
                                       std::to_string(headless::depthOfPixelFormat(format)) +
                                       " is too large for this GL device");
}

}  // namespace vellumtide::cli
