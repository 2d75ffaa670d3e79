// UTF-8 and UTF-16, and fixed text fields.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace vellumtide::headless {

// Parts that are not UTF-8, and surrogates without their other half, become U+FFFD.
std::u16string toUtf16(std::string_view text);
std::string toUtf8(std::u16string_view text);

// The text of a fixed field up to its terminator, or the whole field.
template <size_t N>
std::string fieldText(const char (&field)[N]) {
  size_t length = 0;
  while (length < N && field[length] != 0)
    ++length;
  return std::string(field, length);
}

// Writes a text into a fixed field, cut to leave a terminator.
template <size_t N>
void setField(char (&field)[N], std::string_view text) {
  std::memset(field, 0, N);
  std::memcpy(field, text.data(), text.size() < N ? text.size() : N - 1);
}

}  // namespace vellumtide::headless
