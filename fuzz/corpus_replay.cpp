// Runs a fuzz target over files: each argument is a file or a folder searched with its subfolders.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/fuzz_input.h"

namespace {

namespace fs = std::filesystem;

int replayFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return 0;
  const std::string bytes((std::istreambuf_iterator<char>(file)), {});
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  return 1;
}

int replay(const fs::path& path) {
  if (!fs::is_directory(path)) return replayFile(path);
  int count = 0;
  for (const auto& entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) count += replayFile(entry.path());
  }
  return count;
}

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const int count = replay(argv[i]);
    std::printf("%s: %d files\n", argv[i], count);
    if (i == 1 && count == 0) return 1;
  }
  return 0;
}
