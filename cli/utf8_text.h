// Characters of UTF-8 texts that may hold anything.
#pragma once

#include <cstddef>
#include <string_view>

namespace vellumtide::cli {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// Takes one character off a text that is not empty; bytes that are no UTF-8 become U+FFFD one by
// one.
inline char32_t takeCharacter(std::string_view& text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(0);
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  char32_t character = length == 1 ? lead : lead & (0x7Fu >> length);
  bool valid = length > 0 && length <= text.size();
  for (std::size_t i = 1; valid && i < length; ++i) {
    valid = (byte(i) & 0xC0) == 0x80;
    character = character << 6 | (byte(i) & 0x3F);
  }
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = character >= 0xD800 && character < 0xE000;
  valid = valid && character >= kLeast[length] && character <= 0x10FFFF && !isSurrogate;
  text.remove_prefix(valid ? length : 1);
  return valid ? character : kReplacementCharacter;
}

}  // namespace vellumtide::cli
