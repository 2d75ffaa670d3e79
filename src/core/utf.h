// UTF-8 inside the system, UTF-16 at the host's and the platform's wide-character calls.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vellumtide {

struct Utf16Text {
  std::u16string units;
  std::size_t characters = 0;  // code points, not units
};

// What becomes of bytes that begin nothing: 0x80 to 0xBF outside a character, 0xFE and 0xFF.
enum class StrayBytes { Replaced, Skipped };

// Each maximal part that is not UTF-8 becomes one U+FFFD: the longest beginning of a character, or
// a single byte that begins none.
Utf16Text toUtf16(std::string_view utf8, StrayBytes stray = StrayBytes::Replaced);

// Surrogate pairs become one code point; an unpaired surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view utf16);

}  // namespace vellumtide
