#include "tests/support/pictures.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <sstream>

namespace vellumtide::end_to_end {
namespace {

constexpr int kShown = 5;

template <class Channel, class Draw>
void fill(World& world, Draw draw) {
  for (int y = 0; y < world.height(); ++y) {
    for (int i = 0; i < world.width() * 4; ++i) {
      const Channel value = draw();
      std::memcpy(world.row(y) + static_cast<std::size_t>(i) * sizeof value, &value, sizeof value);
    }
  }
}

// The nearest value that a channel of that many steps can hold.
double heldToSteps(double value, double white) {
  return std::round(std::clamp(value, 0.0, 1.0) * white) / white;
}

}  // namespace

World randomWorld(int width, int height, PF_PixelFormat format, WorldLayout layout) {
  World world(width, height, format, layout);
  std::mt19937 numbers(kSeed);
  if (format == PF_PixelFormat_ARGB128) {
    fill<float>(world, [&] { return std::uniform_real_distribution<float>(-1, 2)(numbers); });
  } else if (format == PF_PixelFormat_ARGB64) {
    fill<uint16_t>(world, [&] { return static_cast<uint16_t>(numbers() % 32769); });
  } else {
    fill<uint8_t>(world, [&] { return static_cast<uint8_t>(numbers()); });
  }
  return world;
}

World plainWorld(int width, int height, PF_PixelFormat format, const Rgba& color) {
  World world(width, height, format);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x)
      world.setPixel(x, y, color[0], color[1], color[2], color[3]);
  }
  return world;
}

Rgba pixelAt(const World& world, int x, int y) {
  const std::vector<double> pixel = world.pixel(x, y);
  return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

Formula everywhere(const Rgba& color) {
  return [color](const Rgba&, int, int) { return color; };
}

std::string differences(const World& source, const World& got, const Formula& formula,
                        double relative) {
  constexpr const char* kChannels[] = {"red", "green", "blue", "alpha"};
  const bool isFloat = got.format() == PF_PixelFormat_ARGB128;
  const double white = got.format() == PF_PixelFormat_ARGB64 ? 32768 : 255;
  std::ostringstream text;
  text.precision(9);
  int wrong = 0;
  for (int y = 0; y < got.height(); ++y) {
    for (int x = 0; x < got.width(); ++x) {
      const Rgba before = pixelAt(source, x, y);
      const Rgba expected = formula(before, x, y);
      const Rgba after = pixelAt(got, x, y);
      for (std::size_t c = 0; c < 4; ++c) {
        const double wanted = isFloat ? expected[c] : heldToSteps(expected[c], white);
        const double allowed = isFloat ? relative * std::max(0.1, std::abs(wanted)) : 1.001 / white;
        if (std::abs(after[c] - wanted) <= allowed) continue;
        if (wrong++ >= kShown) continue;
        text << "(" << x << ", " << y << ") " << kChannels[c] << ": source " << before[c]
             << ", expected " << wanted << ", got " << after[c] << "\n";
      }
    }
  }
  if (wrong) {
    text << wrong << " channels of " << got.width() << " x " << got.height() << " "
         << headless::pixelFormatName(got.format()) << " differ (seed " << kSeed << ")";
  }
  return text.str();
}

}  // namespace vellumtide::end_to_end
