// Paths from and to texts, which are UTF-8 on every platform: a path made from a plain string would
// be read in the code page of a Windows machine.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vellumtide::cli {

inline std::filesystem::path pathOf(std::string_view text) {
  return std::u8string(text.begin(), text.end());
}

inline std::string utf8(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace vellumtide::cli
