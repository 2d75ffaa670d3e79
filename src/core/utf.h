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

// Byte by byte: stray continuation bytes and the bytes 0xFE and 0xFF produce nothing; lead bytes up
// to 0xFD take the sequence length they announce, ended early by a byte that continues nothing.
Utf16Text toUtf16(std::string_view utf8);

// Surrogate pairs become one code point; an unpaired surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view utf16);

}  // namespace vellumtide
