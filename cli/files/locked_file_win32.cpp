#include <windows.h>

#include <utility>

#include "cli/files/locked_file.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

const std::intptr_t kNone = reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE);

HANDLE handleOf(std::intptr_t file) {
  return reinterpret_cast<HANDLE>(file);
}

// Everybody may open, rename and remove the file; the lock alone tells that it is in use.
HANDLE openShared(const fs::path& path, DWORD disposition) {
  return CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, disposition,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Of a byte that no file reaches, because a locked range cannot be read or written by others.
bool lock(HANDLE file) {
  OVERLAPPED place{};
  place.OffsetHigh = 0x40000000;
  return LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) !=
         0;
}

}  // namespace

std::optional<LockedFile> LockedFile::make(const fs::path& path, const fs::path&) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    const DWORD reason = GetLastError();
    if (reason == ERROR_FILE_EXISTS || reason == ERROR_ALREADY_EXISTS) return {};
    throw fs::filesystem_error("CreateFile", path,
                               std::error_code(static_cast<int>(reason), std::system_category()));
  }
  if (lock(file)) return LockedFile(reinterpret_cast<std::intptr_t>(file));
  CloseHandle(file);
  return {};
}

void LockedFile::removeAbandoned(const fs::path& path) noexcept {
  const HANDLE file = openShared(path, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return;
  if (lock(file)) DeleteFileW(path.c_str());
  CloseHandle(file);
}

LockedFile::LockedFile(LockedFile&& other) noexcept : file_(std::exchange(other.file_, kNone)) {}

LockedFile::~LockedFile() {
  if (file_ != kNone) CloseHandle(handleOf(file_));
}

// A new file has the permissions of its folder, as that of any program here.
void LockedFile::becomeLike(const fs::path&) {}

}  // namespace vellumtide::cli
