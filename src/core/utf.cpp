#include "core/utf.h"

#include <cstdint>

namespace vellumtide {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Of a sequence that a lead byte begins: its bytes, and the values its second byte may have, which
// keep overlong forms, surrogates and what lies beyond U+10FFFF out. 0 bytes for none.
struct Sequence {
  std::size_t length = 0;
  std::uint8_t least = 0x80;
  std::uint8_t most = 0xBF;
};

Sequence sequenceOf(std::uint8_t lead) {
  if (lead < 0x80) return {1};
  if (lead < 0xC2 || lead > 0xF4) return {};
  if (lead < 0xE0) return {2};
  if (lead == 0xE0) return {3, 0xA0};
  if (lead == 0xED) return {3, 0x80, 0x9F};
  if (lead < 0xF0) return {3};
  if (lead == 0xF0) return {4, 0x90};
  return lead == 0xF4 ? Sequence{4, 0x80, 0x8F} : Sequence{4};
}

bool isStray(char c) {
  const auto byte = static_cast<std::uint8_t>(c);
  return (byte & 0xC0) == 0x80 || byte >= 0xFE;
}

// Takes the character at `at`, or the longest part there that could have begun one, which gives
// U+FFFD.
char32_t takeCharacter(std::string_view utf8, std::size_t& at) {
  const auto lead = static_cast<std::uint8_t>(utf8[at++]);
  Sequence sequence = sequenceOf(lead);
  if (sequence.length == 0) return kReplacement;
  char32_t code = sequence.length == 1 ? lead : lead & (0x7Fu >> sequence.length);
  for (std::size_t i = 1; i < sequence.length; ++i) {
    const auto next = at < utf8.size() ? static_cast<std::uint8_t>(utf8[at]) : std::uint8_t{0};
    if (next < sequence.least || next > sequence.most) return kReplacement;
    sequence.least = 0x80;
    sequence.most = 0xBF;
    code = (code << 6) | (next & 0x3Fu);
    ++at;
  }
  return code;
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

Utf16Text toUtf16(std::string_view utf8, StrayBytes stray) {
  Utf16Text result;
  result.units.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    if (stray == StrayBytes::Skipped && isStray(utf8[at])) {
      ++at;
      continue;
    }
    appendUtf16(result.units, takeCharacter(utf8, at));
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
