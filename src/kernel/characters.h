#pragma once

namespace vellumtide {

// Classes of the characters of a program's text, whatever the locale.

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr bool isHexDigit(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// That a word may begin with.
constexpr bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

constexpr bool isWordCharacter(char c) {
  return isLetter(c) || isDigit(c);
}

}  // namespace vellumtide
