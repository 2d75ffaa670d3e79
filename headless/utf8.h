// Characters of UTF-8 texts that may hold anything.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vellumtide::headless {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// Takes one character off a text that is not empty. The longest part that could have begun one, or
// a byte that begins none, gives U+FFFD.
inline char32_t takeCharacter(std::string_view& text) {
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::uint8_t lead = byte(0);
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  // What the second byte may be keeps overlong forms, surrogates and what lies beyond U+10FFFF out.
  const std::uint8_t least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const std::uint8_t most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  std::size_t taken = 1;
  char32_t code = length == 1 ? lead : lead & (0x7F >> length);
  for (; taken < length && taken < text.size(); ++taken) {
    if (byte(taken) < (taken == 1 ? least : 0x80) || byte(taken) > (taken == 1 ? most : 0xBF))
      break;
    code = code << 6 | (byte(taken) & 0x3F);
  }
  text.remove_prefix(taken);
  return taken == length ? code : kReplacementCharacter;
}

}  // namespace vellumtide::headless
