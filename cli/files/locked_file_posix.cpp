#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "cli/files/locked_file.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::intptr_t kNone = -1;

int descriptor(std::intptr_t file) {
  return static_cast<int>(file);
}

bool isBehind(const fs::path& path, int file) {
  struct stat named {
  }, opened{};
  return lstat(path.c_str(), &named) == 0 && fstat(file, &opened) == 0 &&
         named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

}  // namespace

std::optional<LockedFile> LockedFile::make(const fs::path& path, const fs::path& model) {
  struct stat like {};
  const bool isLike = !model.empty() && stat(model.c_str(), &like) == 0;
  const mode_t mode = isLike ? (like.st_mode & 0777u) | 0600u : 0666u;
  const int file = open(path.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, mode);
  if (file < 0) {
    if (errno == EEXIST) return {};
    throw fs::filesystem_error("open", path, std::error_code(errno, std::generic_category()));
  }
  // Somebody who clears away may have been quicker with the lock.
  const bool isOthers = flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  if (!isOthers && isBehind(path, file)) return LockedFile(file);
  close(file);
  return {};
}

void LockedFile::removeAbandoned(const fs::path& path) noexcept {
  const int file = open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return;
  struct stat status {};
  const bool isFile = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
  if (isFile && flock(file, LOCK_EX | LOCK_NB) == 0 && isBehind(path, file)) unlink(path.c_str());
  close(file);
}

LockedFile::LockedFile(LockedFile&& other) noexcept : file_(std::exchange(other.file_, kNone)) {}

LockedFile::~LockedFile() {
  if (file_ != kNone) close(descriptor(file_));
}

void LockedFile::becomeLike(const fs::path& model) {
  struct stat like {
  }, own{};
  if (stat(model.c_str(), &like) != 0 || fstat(descriptor(file_), &own) != 0) return;
  if (like.st_uid != own.st_uid || like.st_gid != own.st_gid) {
    [[maybe_unused]] const bool isGiven =
        fchown(descriptor(file_), like.st_uid, like.st_gid) == 0 ||
        fchown(descriptor(file_), static_cast<uid_t>(-1), like.st_gid) == 0;
  }
  if (like.st_mode != own.st_mode) fchmod(descriptor(file_), like.st_mode & 07777u);
}

}  // namespace vellumtide::cli
