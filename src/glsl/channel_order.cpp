#include "glsl/channel_order.h"

#include <array>
#include <cstddef>

namespace vellumtide {
namespace {

struct SwizzlePair {
  std::string_view input;
  std::string_view output;
};

constexpr std::array<SwizzlePair, kChannelOrderCount> kSwizzles{{
    {".rgba", ".rgba"}, {".rgab", ".rgab"}, {".rbga", ".rbga"}, {".ragb", ".rbag"},
    {".rbag", ".ragb"}, {".rabg", ".rabg"}, {".grba", ".grba"}, {".grab", ".grab"},
    {".brga", ".gbra"}, {".argb", ".gbar"}, {".brag", ".garb"}, {".arbg", ".gabr"},
    {".gbra", ".brga"}, {".garb", ".brag"}, {".bgra", ".bgra"}, {".agrb", ".bgar"},
    {".barg", ".barg"}, {".abrg", ".bagr"}, {".gbar", ".argb"}, {".gabr", ".arbg"},
    {".bgar", ".agrb"}, {".agbr", ".agbr"}, {".bagr", ".abrg"}, {".abgr", ".abgr"},
}};

/// A pair of empty swizzles outside the table.
SwizzlePair swizzlesOf(ChannelOrder order) {
  const auto row = static_cast<std::size_t>(order);
  return row < kSwizzles.size() ? kSwizzles[row] : SwizzlePair{};
}

}  // namespace

std::string_view inputSwizzle(ChannelOrder order) {
  return swizzlesOf(order).input;
}

std::string_view outputSwizzle(ChannelOrder order) {
  return swizzlesOf(order).output;
}

}  // namespace vellumtide
