// A folder of a test's own, gone with it.
#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace vellumtide::testing {

inline std::filesystem::path utf8Path(std::string_view text) {
  return std::u8string(text.begin(), text.end());
}

// With the separators that the scripts of this system give their paths.
inline std::string nativePath(const std::string& path) {
  return std::filesystem::path(path).make_preferred().string();
}

class ScratchFolder {
 public:
  ScratchFolder() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    root_ = std::filesystem::temp_directory_path() / ("vellumtide_" + std::to_string(now));
    std::filesystem::create_directories(root_);
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
  }

  // "" gives the folder itself.
  std::string path(std::string_view name) const {
    return name.empty() ? root_.string() : root_.string() + "/" + std::string(name);
  }
  // Writes a file and the folders it lies in.
  void put(std::string_view name, std::string_view bytes) const {
    std::filesystem::create_directories(utf8Path(path(name)).parent_path());
    std::ofstream(utf8Path(path(name)), std::ios::binary) << bytes;
  }
  std::string get(std::string_view name) const {
    std::ifstream file(utf8Path(path(name)), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

 private:
  std::filesystem::path root_;
};

}  // namespace vellumtide::testing
