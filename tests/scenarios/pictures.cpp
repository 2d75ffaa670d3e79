#include "tests/scenarios/pictures.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace vellumtide::scenarios {
namespace {

template <class Channel, class Draw>
void fill(headless::World& world, Draw draw) {
  for (int y = 0; y < world.height(); ++y) {
    for (int i = 0; i < world.width() * 4; ++i) {
      const Channel value = draw();
      std::memcpy(world.row(y) + static_cast<std::size_t>(i) * sizeof value, &value, sizeof value);
    }
  }
}

}  // namespace

headless::World drawnWorld(int width, int height, const std::string& kind, int seed,
                           headless::WorldLayout layout) {
  const bool isFloat = kind == "floats" || kind == "specials";
  headless::World world(width, height,
                        isFloat           ? PF_PixelFormat_ARGB128
                        : kind == "words" ? PF_PixelFormat_ARGB64
                                          : PF_PixelFormat_ARGB32,
                        layout);
  Dice dice(static_cast<std::uint64_t>(seed));
  using Limits = std::numeric_limits<float>;
  const auto number = [&] { return static_cast<float>(dice.below(3001)) / 1000.0f - 1.0f; };
  const auto special = [&] {
    if (!dice.oneIn(40)) return number();
    return dice.pick(
        {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), -0.0f, 1e-38f, 1e30f});
  };
  if (kind == "specials") {
    fill<float>(world, special);
  } else if (isFloat) {
    fill<float>(world, number);
  } else if (kind == "words") {
    fill<std::uint16_t>(world, [&] { return dice.below(32769); });
  } else {
    fill<std::uint8_t>(world, [&] { return dice.below(256); });
  }
  return world;
}

}  // namespace vellumtide::scenarios
