#include "core/utf.h"

#include <bit>
#include <cstdint>

namespace vellumtide {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Bytes of the sequence that a lead byte announces; 0 for a byte that leads nothing.
std::size_t sequenceLength(std::uint8_t lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC0 || lead >= 0xFE) return 0;
  return static_cast<std::size_t>(std::countl_one(lead));
}

void appendUtf16(std::u16string& units, char32_t code) {
  if (code < 0x10000) {
    units.push_back(static_cast<char16_t>(code));
    return;
  }
  units.push_back(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)));
  units.push_back(static_cast<char16_t>(0xDC00 + (code & 0x3FF)));
}

void appendUtf8(std::string& bytes, char32_t code) {
  const auto put = [&bytes](char32_t value) { bytes.push_back(static_cast<char>(value)); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | (code >> 6));
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | (code >> 12));
    put(0x80 | ((code >> 6) & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | (code >> 18));
    put(0x80 | ((code >> 12) & 0x3F));
    put(0x80 | ((code >> 6) & 0x3F));
    put(0x80 | (code & 0x3F));
  }
}

bool isHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
bool isLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

}  // namespace

Utf16Text toUtf16(std::string_view utf8) {
  Utf16Text result;
  result.units.reserve(utf8.size());
  std::size_t i = 0;
  while (i < utf8.size()) {
    const auto lead = static_cast<std::uint8_t>(utf8[i++]);
    const std::size_t length = sequenceLength(lead);
    if (length == 0) continue;
    char32_t code = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t k = 1; k < length && i < utf8.size(); ++k) {
      const auto next = static_cast<std::uint8_t>(utf8[i]);
      if ((next & 0xC0) != 0x80) break;
      code = (code << 6) | (next & 0x3F);
      ++i;
    }
    // Five- and six-byte sequences can announce code points that UTF-16 cannot hold.
    appendUtf16(result.units, code > 0x10FFFF ? kReplacement : code);
    ++result.characters;
  }
  return result;
}

std::string toUtf8(std::u16string_view utf16) {
  std::string bytes;
  bytes.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size(); ++i) {
    char32_t code = utf16[i];
    if (isHighSurrogate(utf16[i]) && i + 1 < utf16.size() && isLowSurrogate(utf16[i + 1])) {
      code = 0x10000 + ((code - 0xD800) << 10) + (utf16[++i] - 0xDC00u);
    } else if (isHighSurrogate(utf16[i]) || isLowSurrogate(utf16[i])) {
      code = kReplacement;
    }
    appendUtf8(bytes, code);
  }
  return bytes;
}

}  // namespace vellumtide
