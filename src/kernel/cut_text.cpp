#include "kernel/cut_text.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "kernel/fixed_text.h"

namespace vellumtide {
namespace {

// Bytes of the character that a byte begins; 1 for one that begins none.
std::size_t characterLength(std::uint8_t lead) {
  return lead >= 0xC2 && lead <= 0xF4 ? static_cast<std::size_t>(std::countl_one(lead)) : 1;
}

}  // namespace

std::string_view cutText(std::string_view text, std::size_t limit) {
  if (text.size() <= limit && text.size() != NameText::kCapacity) return text;
  text = text.substr(0, limit);
  const std::size_t longestPart = std::min<std::size_t>(3, text.size());
  for (std::size_t part = 1; part <= longestPart; ++part) {
    const auto byte = static_cast<std::uint8_t>(text[text.size() - part]);
    if ((byte & 0xC0) == 0x80) continue;
    if (characterLength(byte) > part) text.remove_suffix(part);
    break;
  }
  return text;
}

}  // namespace vellumtide
