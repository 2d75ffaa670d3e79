// Arithmetic between the sample ranges of image files and of the host's pixel buffers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <type_traits>

#include "headless/world.h"

namespace vellumtide::cli {

// White of a sample type that uses its whole range, as files do.
template <typename T>
inline constexpr T kFileWhite = std::is_floating_point_v<T> ? T{1} : std::numeric_limits<T>::max();

// The same of the host's buffers, where 16 bits run from 0 to 32768.
template <typename T>
inline constexpr T kHostWhite = static_cast<T>(std::is_same_v<T, std::uint16_t> ? 32768
                                                                                : kFileWhite<T>);

// From a range whose white is `fromWhite` to one whose white is `toWhite`. Integers are rounded to
// the nearest step and held to black..white; NaN becomes black.
template <typename To, typename From>
To rescaled(From sample, double fromWhite, double toWhite) {
  const double unit = static_cast<double>(sample) / fromWhite;
  if constexpr (std::is_floating_point_v<To>) {
    return static_cast<To>(unit * toWhite);
  } else {
    return unit > 0 ? static_cast<To>((unit < 1 ? unit : 1) * toWhite + 0.5) : To{0};
  }
}

// Divides the alpha out of a pixel's colour (or multiplies it in); where alpha is 0 the colour
// stays as it is.
template <typename T>
void takeAlphaApart(std::span<T, 4> rgba, double white) {
  if (rgba[3] == T{0}) return;
  const double scale = white / static_cast<double>(rgba[3]);
  for (T& sample : rgba.template first<3>())
    sample = rescaled<T>(sample * scale, white, white);
}
template <typename T>
void multiplyAlphaIn(std::span<T, 4> rgba, double white) {
  if (rgba[3] == T{0}) return;
  const double scale = static_cast<double>(rgba[3]) / white;
  for (T& sample : rgba.template first<3>())
    sample = rescaled<T>(sample * scale, white, white);
}

// Calls `action` with a sample of the type that buffers of the format hold.
template <typename Action>
auto withSampleType(PF_PixelFormat format, Action action) {
  switch (format) {
    case PF_PixelFormat_ARGB64:
      return action(std::uint16_t{});
    case PF_PixelFormat_ARGB128:
      return action(float{});
    default:
      return action(std::uint8_t{});
  }
}

// One row of a buffer, four samples a pixel in the order alpha, red, green, blue.
template <typename T>
std::span<T> rowOf(headless::World& world, int y) {
  return {reinterpret_cast<T*>(world.row(y)), std::size_t(4) * world.width()};
}
template <typename T>
std::span<const T> rowOf(const headless::World& world, int y) {
  return {reinterpret_cast<const T*>(world.row(y)), std::size_t(4) * world.width()};
}

}  // namespace vellumtide::cli
