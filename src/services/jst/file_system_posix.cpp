#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "services/jst/file_system.h"

namespace vellumtide::_JST {
namespace {

// Empty, which no call accepts, for a path with a NUL inside.
std::string nativePath(std::string_view path) {
  if (path.find('\0') != path.npos) return {};
  std::string native(path);
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

int openFlags(const char* mode) {
  switch (mode[0]) {
    case 'w':
      return O_WRONLY | O_CREAT | O_TRUNC;
    case 'a':
      return O_WRONLY | O_CREAT | O_APPEND;
    default:
      return std::strchr(mode, '+') ? O_RDWR : O_RDONLY;
  }
}

bool isFolder(int folder, const dirent& entry, bool& known) {
  known = true;
  if (entry.d_type == DT_DIR) return true;
  if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return false;
  struct stat status;
  known = fstatat(folder, entry.d_name, &status, 0) == 0;
  return known && S_ISDIR(status.st_mode);
}

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

}  // namespace

bool pathExists(std::string_view path) {
  struct stat status;
  return stat(nativePath(path).c_str(), &status) == 0 || errno == EACCES;
}

std::FILE* openStream(std::string_view path, const char* mode) {
  const int flags = openFlags(mode);
  // Without O_NONBLOCK the opening of a pipe waits for its other end.
  const int file = open(nativePath(path).c_str(), flags | O_NONBLOCK | O_CLOEXEC, 0666);
  if (file < 0) return nullptr;
  struct stat status;
  const bool reads = (flags & O_ACCMODE) != O_WRONLY;
  const bool usable =
      fstat(file, &status) == 0 && !S_ISDIR(status.st_mode) && (!reads || S_ISREG(status.st_mode));
  std::FILE* stream = usable ? fdopen(file, mode) : nullptr;
  if (!stream) close(file);
  return stream;
}

bool eraseFile(std::string_view path) {
  return unlink(nativePath(path).c_str()) == 0;
}

bool makeFolder(std::string_view path) {
  return mkdir(nativePath(path).c_str(), 0777) == 0;
}

bool eraseFolder(std::string_view path) {
  return rmdir(nativePath(path).c_str()) == 0;
}

std::vector<std::string> entryNames(std::string_view folder, EntryKind kind) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, CloseFolder> stream(opendir(nativePath(folder).c_str()));
  while (const dirent* entry = stream ? readdir(stream.get()) : nullptr) {
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    bool known;
    const bool found = isFolder(dirfd(stream.get()), *entry, known);
    if (known && found == (kind == EntryKind::Folder)) names.emplace_back(name);
  }
  return names;
}

}  // namespace vellumtide::_JST
