#include "cli/scratch_folder.h"

#include <cstdio>
#include <mutex>
#include <random>
#include <set>

namespace vellumtide::cli {

namespace fs = std::filesystem;

namespace {

std::mutex mutex;
std::set<fs::path> folders;
fs::path place;  // "" for the system's temporary files

}  // namespace

ScratchFolder::ScratchFolder() {
  std::random_device random;
  do {
    char name[32];
    std::snprintf(name, sizeof name, "vellumtide-%08x%08x", random(), random());
    path_ = (place.empty() ? fs::temp_directory_path() : place) / name;
  } while (!fs::create_directory(path_));
  fs::permissions(path_, fs::perms::owner_all);
  const std::lock_guard lock(mutex);
  folders.insert(path_);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
  const std::lock_guard lock(mutex);
  folders.erase(path_);
}

void ScratchFolder::makeIn(const fs::path& folder) {
  place = folder;
}

void ScratchFolder::removeAll() {
  const std::lock_guard lock(mutex);
  std::error_code ignored;
  for (const fs::path& path : folders)
    fs::remove_all(path, ignored);
}

}  // namespace vellumtide::cli
