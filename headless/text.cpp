#include "headless/text.h"

#include <cstdint>

#include "headless/utf8.h"

namespace vellumtide::headless {
namespace {

void appendUtf8(std::string& text, char32_t code) {
  if (code < 0x80) {
    text += static_cast<char>(code);
    return;
  }
  const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
  constexpr uint8_t kLead[] = {0, 0xC0, 0xE0, 0xF0};
  text += static_cast<char>(kLead[more] | code >> (6 * more));
  for (int i = more - 1; i >= 0; --i)
    text += static_cast<char>(0x80 | (code >> (6 * i) & 0x3F));
}

}  // namespace

std::u16string toUtf16(std::string_view text) {
  std::u16string wide;
  while (!text.empty()) {
    const char32_t code = takeCharacter(text);
    if (code < 0x10000) {
      wide += static_cast<char16_t>(code);
    } else {
      wide += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
      wide += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
    }
  }
  return wide;
}

std::string toUtf8(std::u16string_view text) {
  std::string narrow;
  for (size_t at = 0; at < text.size(); ++at) {
    char32_t code = text[at];
    const bool high = code >= 0xD800 && code < 0xDC00;
    const bool paired =
        high && at + 1 < text.size() && text[at + 1] >= 0xDC00 && text[at + 1] < 0xE000;
    if (paired) {
      code = 0x10000 + ((code - 0xD800) << 10) + (text[++at] - 0xDC00);
    } else if (code >= 0xD800 && code < 0xE000) {
      code = kReplacementCharacter;
    }
    appendUtf8(narrow, code);
  }
  return narrow;
}

}  // namespace vellumtide::headless
