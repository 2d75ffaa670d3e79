#include "cli/sheet/sheet_cell_picture.h"

#include <algorithm>
#include <cmath>

#include "cli/image/picture_drawing.h"
#include "cli/image/sample_math.h"

namespace vellumtide::cli {
namespace {

using headless::World;

constexpr int kSquare = 8;
constexpr SheetColor kLight{0xB2, 0xB2, 0xB2}, kDark{0x8C, 0x8C, 0x8C};

float held(float sample) {
  return sample > 0 ? std::min(sample, 1.0f) : 0;
}

// 32 bits, alpha multiplied in, as a filter needs it.
World associated(const World& rendered) {
  World world = headless::convertWorld(rendered, PF_PixelFormat_ARGB128);
  for (int y = 0; y < world.height(); ++y) {
    const std::span<float> row = rowOf<float>(world, y);
    for (std::size_t i = 0; i < row.size(); i += 4) {
      row[i] = held(row[i]);
      for (std::size_t c = 1; c < 4; ++c)
        row[i + c] = held(row[i + c]) * row[i];
    }
  }
  return world;
}

World over(const World& picture, const std::optional<SheetColor>& background) {
  World result(picture.width(), picture.height(), PF_PixelFormat_ARGB32);
  for (int y = 0; y < picture.height(); ++y) {
    const std::span<const float> from = rowOf<float>(picture, y);
    const std::span<std::uint8_t> to = rowOf<std::uint8_t>(result, y);
    for (int x = 0; x < picture.width(); ++x) {
      const bool light = (x / kSquare + y / kSquare) % 2 == 0;
      const SheetColor ground = background.value_or(light ? kLight : kDark);
      const std::uint8_t behind[] = {255, ground.red, ground.green, ground.blue};
      const std::size_t at = 4 * std::size_t(x);
      to[at] = 255;
      for (std::size_t c = 1; c < 4; ++c) {
        const float sample = from[at + c] + (1 - held(from[at])) * behind[c] / 255.0f;
        to[at + c] = rescaled<std::uint8_t>(sample, 1, 255);
      }
    }
  }
  return result;
}

}  // namespace

World cellPicture(const World& rendered, double pixelAspect, const CellOptions& options) {
  // Pixels that are not square are shown by making one side larger, never smaller.
  const double wide = rendered.width() * std::max(pixelAspect, 1.0);
  const double high = rendered.height() * std::max(1 / pixelAspect, 1.0);
  const double scale = options.mostWidth == 0
                           ? 1
                           : std::min({1.0, options.mostWidth / wide, options.mostHeight / high});
  const auto side = [scale](double length) {
    return std::max(1, static_cast<int>(std::lround(length * scale)));
  };
  const World picture = associated(rendered);
  if (side(wide) == picture.width() && side(high) == picture.height())
    return over(picture, options.background);
  return over(scaledPicture(picture, side(wide), side(high)), options.background);
}

}  // namespace vellumtide::cli
