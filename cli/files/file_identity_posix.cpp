#include <sys/stat.h>

#include "cli/files/file_identity.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

FileIdentity identity(const struct stat& status, const fs::path& name = {}) {
  return {static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino),
          name};
}

}  // namespace

std::optional<FileIdentity> identityOf(const fs::path& name) {
  fs::path path = name;
  for (int links = 0; links < kMostLinks; ++links) {
    struct stat status {};
    const bool isNamed = lstat(path.c_str(), &status) == 0;
    const bool isLink = isNamed && S_ISLNK(status.st_mode);
    if (isNamed && (!isLink || stat(path.c_str(), &status) == 0)) {
      if (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode)) return {};
      return identity(status);
    }
    const fs::path parent = path.parent_path();
    if (!isLink) {
      const fs::path folder = parent.empty() ? fs::path(".") : parent;
      if (stat(folder.c_str(), &status) != 0) return {};
      return identity(status, path.filename());
    }
    std::error_code failed;
    path = parent / fs::read_symlink(path, failed);
    if (failed) return {};
  }
  return {};
}

}  // namespace vellumtide::cli
