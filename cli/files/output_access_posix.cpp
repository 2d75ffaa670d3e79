#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "cli/files/output_access.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const char* what, const fs::path& path, int reason) {
  throw fs::filesystem_error(what, path, std::error_code(reason, std::generic_category()));
}

std::error_code forbidden(const fs::path& path, int access) {
  if (faccessat(AT_FDCWD, path.c_str(), access, AT_EACCESS) == 0) return {};
  return {errno, std::generic_category()};
}

int opened(const OutputTarget& target) {
  if (target.kind == OutputTarget::Kind::Output) return fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
  if (target.kind == OutputTarget::Kind::Error) return fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3);
  return open(target.path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
}

}  // namespace

std::error_code writingForbidden(const fs::path& file) {
  return forbidden(file, W_OK);
}

std::error_code addingForbidden(const fs::path& folder) {
  return forbidden(folder, W_OK | X_OK);
}

std::optional<OutputTarget::Kind> ownStream(const fs::path& path) {
  struct stat named {
  }, own{};
  if (stat(path.c_str(), &named) != 0) return {};
  const auto isBehind = [&](int stream) {
    return fstat(stream, &own) == 0 && own.st_dev == named.st_dev && own.st_ino == named.st_ino;
  };
  if (isBehind(STDOUT_FILENO)) return OutputTarget::Kind::Output;
  if (isBehind(STDERR_FILENO)) return OutputTarget::Kind::Error;
  return {};
}

OpenStream::OpenStream(const OutputTarget& target) : path_(target.path), file_(opened(target)) {
  if (file_ < 0) fail("open", path_, errno);
  // Another file may have taken the name since it was looked at.
  struct stat status {};
  const bool isStream = target.kind != OutputTarget::Kind::Stream ||
                        (fstat(static_cast<int>(file_), &status) == 0 &&
                         (S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode)));
  if (isStream) return;
  close(static_cast<int>(file_));
  fail("open", path_, EBUSY);
}

OpenStream::~OpenStream() {
  close(static_cast<int>(file_));
}

void OpenStream::write(const char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t written = ::write(static_cast<int>(file_), bytes, count);
    if (written < 0 && errno != EINTR) fail("write", path_, errno);
    if (written <= 0) continue;
    bytes += written;
    count -= static_cast<std::size_t>(written);
  }
}

}  // namespace vellumtide::cli
