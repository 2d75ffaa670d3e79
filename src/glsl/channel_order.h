#pragma once

#include <string_view>

namespace vellumtide {

/// The order, 0 to 23, in which the host's pixels hold the four channels once they are uploaded as
/// an RGBA texture.
using ChannelOrder = int;

inline constexpr int kChannelOrderCount = 24;

/// The swizzle that turns a texel into (r, g, b, a), leading dot included; empty outside 0 to 23.
std::string_view inputSwizzle(ChannelOrder order);

/// Its inverse, which turns (r, g, b, a) into the texel to store.
std::string_view outputSwizzle(ChannelOrder order);

}  // namespace vellumtide
