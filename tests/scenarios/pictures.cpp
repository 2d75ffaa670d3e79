#include "tests/scenarios/pictures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <vector>

namespace vellumtide::scenarios {
namespace {

using headless::World;

template <class Channel, class Draw>
void fill(World& world, Draw draw) {
  for (int y = 0; y < world.height(); ++y) {
    for (int i = 0; i < world.width() * 4; ++i) {
      const Channel value = draw();
      std::memcpy(world.row(y) + static_cast<std::size_t>(i) * sizeof value, &value, sizeof value);
    }
  }
}

// An unfiltered read at a texel's centre differs from a filtered one by the rounding of the
// filter's weight times the neighbour's distance. The software rasteriser has weights of 8 bits
// for bytes: one step. Elsewhere weights are floats, and a coordinate of a few hundred texels is
// exact to 2e-5 of a texel: 3e-5 of the range of -1 to 2, a step of 32768. Kernels sum with at most
// full weight, so each adds no more than that.
double toleranceOf(PF_PixelFormat format, double value, int depth) {
  if (format == PF_PixelFormat_ARGB32) return 1.01 / 255 * depth;
  if (format == PF_PixelFormat_ARGB64) return 4.01 / 32768 * depth;
  return 1e-4 * depth * std::max(1.0, std::abs(value));
}

bool same(double a, double b) {
  return a == b || (std::isnan(a) && std::isnan(b));
}

}  // namespace

World drawnWorld(int width, int height, const std::string& kind, int seed,
                 headless::WorldLayout layout) {
  const bool isFloat = kind == "floats" || kind == "specials";
  World world(width, height,
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

std::string differenceOf(const World& got, const World& expected, const World* unfiltered,
                         int depth) {
  std::string first;
  int count = 0;
  for (int y = 0; y < expected.height(); ++y) {
    for (int x = 0; x < expected.width(); ++x) {
      const std::vector<double> is = got.pixel(x, y), should = expected.pixel(x, y);
      for (std::size_t c = 0; c < 4; ++c) {
        if (same(is[c], should[c])) continue;
        const double tolerance = toleranceOf(expected.format(), should[c], std::max(depth, 1));
        if (std::abs(is[c] - should[c]) <= tolerance) continue;
        if (unfiltered) {
          // Some nodes of a graph may read this way and others that.
          const double other = unfiltered->pixel(x, y)[c];
          if (!same(should[c], other) && !(std::abs(should[c] - other) <= tolerance)) continue;
        }
        if (count++ > 0) continue;
        char text[160];
        std::snprintf(text, sizeof text, "at %d, %d channel %d is %.9g, expected %.9g", x, y,
                      static_cast<int>(c), is[c], should[c]);
        first = text;
      }
    }
  }
  if (count == 0) return "";
  return first + " (" + std::to_string(count) + " of " +
         std::to_string(expected.width() * expected.height() * 4) + " channels)";
}

bool hasSpecials(const World& world) {
  if (world.format() != PF_PixelFormat_ARGB128) return false;
  for (int y = 0; y < world.height(); ++y) {
    const auto* row = reinterpret_cast<const float*>(world.row(y));
    if (!std::all_of(row, row + world.width() * 4, [](float v) { return std::isfinite(v); })) {
      return true;
    }
  }
  return false;
}

}  // namespace vellumtide::scenarios
