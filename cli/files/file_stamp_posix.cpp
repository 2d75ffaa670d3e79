#include <sys/stat.h>

#include "cli/files/file_stamp.h"

namespace vellumtide::cli {

FileStamp stampOf(const std::filesystem::path& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return {};
  const timespec time = status.st_mtim;
  return {true, static_cast<std::uint64_t>(status.st_size),
          std::int64_t{time.tv_sec} * 1000000000 + time.tv_nsec,
          static_cast<std::uint64_t>(status.st_ino)};
}

}  // namespace vellumtide::cli
