#include "cli/scratch_folder.h"

#include <cstdio>
#include <random>

namespace vellumtide::cli {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
  std::random_device random;
  do {
    char name[32];
    std::snprintf(name, sizeof name, "vellumtide-%08x%08x", random(), random());
    path_ = fs::temp_directory_path() / name;
  } while (!fs::create_directory(path_));
  fs::permissions(path_, fs::perms::owner_all);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace vellumtide::cli
