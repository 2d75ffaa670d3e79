// A world in another pixel format or at another resolution.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

#include "headless/world.h"

namespace vellumtide::headless {
namespace {

// Channels of one row, alpha, red, green, blue a pixel, 1.0 white.
void readRow(const World& world, int y, std::vector<float>& channels) {
  const int count = world.width() * 4;
  const uint8_t* row = world.row(y);
  channels.resize(static_cast<size_t>(count));
  if (world.format() == PF_PixelFormat_ARGB128) {
    if (count > 0) std::memcpy(channels.data(), row, sizeof(float) * channels.size());
  } else if (world.format() == PF_PixelFormat_ARGB64) {
    for (int i = 0; i < count; ++i) {
      uint16_t step;
      std::memcpy(&step, row + i * 2, 2);
      channels[i] = step / 32768.0f;
    }
  } else {
    for (int i = 0; i < count; ++i)
      channels[i] = row[i] / 255.0f;
  }
}

void writeRow(World& world, int y, const std::vector<float>& channels) {
  uint8_t* row = world.row(y);
  if (world.format() == PF_PixelFormat_ARGB128) {
    if (!channels.empty()) std::memcpy(row, channels.data(), sizeof(float) * channels.size());
    return;
  }
  const bool deep = world.format() == PF_PixelFormat_ARGB64;
  const float white = deep ? 32768.0f : 255.0f;
  for (size_t i = 0; i < channels.size(); ++i) {
    // Written so that NaN becomes 0.
    const float held = channels[i] > 0 ? std::min(channels[i], 1.0f) : 0.0f;
    const auto step = static_cast<uint16_t>(std::lround(held * white));
    if (deep) {
      std::memcpy(row + i * 2, &step, 2);
    } else {
      row[i] = static_cast<uint8_t>(step);
    }
  }
}

int scaledSize(int size, PF_RationalScale scale) {
  const int64_t num = scale.num, den = scale.den;
  return static_cast<int>((size * num + den - 1) / den);
}

int scaledOrigin(int at, PF_RationalScale scale) {
  return static_cast<int>(std::floor(static_cast<double>(at) * scale.num / scale.den));
}

// Where a coordinate of the new picture lies in the old one.
int64_t sourceOf(int64_t at, PF_RationalScale scale) {
  return at * scale.den / scale.num;
}

// Sums of the pixels under one new row: alpha and plain and alpha-weighted colours.
struct Area {
  double alpha = 0, plain[3] = {}, weighted[3] = {};
  int count = 0;

  void add(const float* pixel) {
    ++count;
    alpha += pixel[0];
    for (int c = 0; c < 3; ++c) {
      plain[c] += pixel[c + 1];
      weighted[c] += static_cast<double>(pixel[0]) * pixel[c + 1];
    }
  }

  void mean(float* pixel) const {
    pixel[0] = static_cast<float>(alpha / count);
    for (int c = 0; c < 3; ++c) {
      pixel[c + 1] = static_cast<float>(alpha != 0 ? weighted[c] / alpha : plain[c] / count);
    }
  }
};

}  // namespace

World convertWorld(const World& world, PF_PixelFormat format) {
  World converted(world.width(), world.height(), format, world.layout());
  std::vector<float> channels;
  for (int y = 0; y < world.height(); ++y) {
    readRow(world, y, channels);
    writeRow(converted, y, channels);
  }
  return converted;
}

World downsampleWorld(const World& world, PF_RationalScale x, PF_RationalScale y) {
  if (x.num <= 0 || y.num <= 0 || x.den == 0 || y.den == 0) {
    throw std::invalid_argument("a downsample factor that is not above 0");
  }
  WorldLayout layout = world.layout();
  layout.originX = scaledOrigin(layout.originX, x);
  layout.originY = scaledOrigin(layout.originY, y);
  World small(scaledSize(world.width(), x), scaledSize(world.height(), y), world.format(), layout);
  std::vector<float> channels, row(static_cast<size_t>(small.width()) * 4);
  for (int newY = 0; newY < small.height(); ++newY) {
    std::vector<Area> areas(static_cast<size_t>(small.width()));
    const int64_t top = sourceOf(newY, y);
    const int64_t bottom =
        std::min<int64_t>(world.height(), std::max(top + 1, sourceOf(newY + 1, y)));
    for (int64_t oldY = top; oldY < bottom; ++oldY) {
      readRow(world, static_cast<int>(oldY), channels);
      for (int newX = 0; newX < small.width(); ++newX) {
        const int64_t left = sourceOf(newX, x);
        const int64_t right =
            std::min<int64_t>(world.width(), std::max(left + 1, sourceOf(newX + 1, x)));
        for (int64_t oldX = left; oldX < right; ++oldX)
          areas[newX].add(&channels[oldX * 4]);
      }
    }
    for (int newX = 0; newX < small.width(); ++newX) {
      if (areas[newX].count > 0) areas[newX].mean(&row[static_cast<size_t>(newX) * 4]);
    }
    writeRow(small, newY, row);
  }
  return small;
}

}  // namespace vellumtide::headless
