// UTF-8 to the wide texts of Windows calls. Internal to this folder.
#pragma once

#include <string>

#include "headless/text.h"

namespace vellumtide::headless {

inline std::wstring widen(const std::string& text) {
  const std::u16string wide = toUtf16(text);
  return std::wstring(wide.begin(), wide.end());
}

inline std::string narrow(const std::wstring& text) {
  return toUtf8(std::u16string(text.begin(), text.end()));
}

}  // namespace vellumtide::headless
