// Test pictures and the comparison of a rendered one with what a formula gives.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "headless/world.h"

namespace vellumtide::end_to_end {

using headless::World;
using headless::WorldLayout;

// Red, green, blue, alpha; 1.0 white.
using Rgba = std::array<double, 4>;

inline constexpr PF_PixelFormat kFormats[] = {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64,
                                              PF_PixelFormat_ARGB128};
inline constexpr PF_PixelFormat kFloat = PF_PixelFormat_ARGB128;

inline constexpr unsigned kSeed = 20240229;

// Every byte, every step from 0 to 32768, or floats from -1 to 2, drawn with kSeed.
World randomWorld(int width, int height, PF_PixelFormat format, WorldLayout layout = {});
// One colour all over.
World plainWorld(int width, int height, PF_PixelFormat format, const Rgba& color);

Rgba pixelAt(const World& world, int x, int y);

// What the pixel at (x, y) of a layer should be, given the layer's own pixel there.
using Formula = std::function<Rgba(const Rgba& source, int x, int y)>;
Formula everywhere(const Rgba& color);

// The pixels of `got` that a formula on `source` does not give: within one step at 8 and 16 bits
// (held to 0..1), within `relative` times the value (at least 0.1) for floats. A line each for the
// first few: place, channel, source, expected, got; "" when all agree.
std::string differences(const World& source, const World& got, const Formula& formula,
                        double relative = 1e-5);

}  // namespace vellumtide::end_to_end
