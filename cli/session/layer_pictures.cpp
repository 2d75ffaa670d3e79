#include "cli/session/layer_pictures.h"

#include <algorithm>

#include "cli/session/device_limits.h"
#include "cli/text/failure.h"
#include "cli/text/number_text.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {

namespace {

ImageFile readSource(const LayerSource& source) {
  if (!source.isBlack) return readImageFile(source.file);
  const ImageShape shape = readImageShape(source.file);
  ImageFile black;
  black.pixels = headless::World(shape.width, shape.height, shape.format);
  return black;
}

}  // namespace

LayerPictures readPictures(const std::vector<LayerSource>& sources, std::optional<int> depth) {
  LayerPictures result;
  int deepest = 8;
  for (const LayerSource& source : sources) {
    ImageFile file = readSource(source);
    deepest = std::max(deepest, headless::depthOfPixelFormat(file.pixels.format()));
    if (result.pictures.empty()) {
      result.write.straightAlpha = file.straightAlpha;
      result.write.preferHalf = file.sampleType == SampleType::Half;
    }
    result.pictures.push_back({std::move(file.pixels), closestRatio(file.pixelAspect),
                               utf8(std::filesystem::absolute(source.file))});
  }
  result.format = headless::pixelFormatOfDepth(depth.value_or(deepest));
  for (LayerPicture& picture : result.pictures) {
    if (picture.pixels.format() != result.format) {
      picture.pixels = headless::convertWorld(picture.pixels, result.format);
    }
  }
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
