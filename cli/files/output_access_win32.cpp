#include <windows.h>

#include <algorithm>

#include "cli/files/output_access.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

std::error_code lastError() {
  return {static_cast<int>(GetLastError()), std::system_category()};
}

constexpr DWORD kEveryone = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE opened(const OutputTarget& target) {
  const bool isOwn = target.kind != OutputTarget::Kind::Stream;
  if (!isOwn) {
    return CreateFileW(target.path.c_str(), GENERIC_WRITE, kEveryone, nullptr, OPEN_EXISTING, 0,
                       nullptr);
  }
  const HANDLE own = GetStdHandle(target.kind == OutputTarget::Kind::Output ? STD_OUTPUT_HANDLE
                                                                            : STD_ERROR_HANDLE);
  HANDLE copy = INVALID_HANDLE_VALUE;
  DuplicateHandle(GetCurrentProcess(), own, GetCurrentProcess(), &copy, 0, FALSE,
                  DUPLICATE_SAME_ACCESS);
  return copy;
}

}  // namespace

std::error_code writingForbidden(const fs::path& file) {
  const DWORD attributes = GetFileAttributesW(file.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_READONLY)) return {};
  return {ERROR_ACCESS_DENIED, std::system_category()};
}

std::error_code addingForbidden(const fs::path& folder) {
  const HANDLE file = CreateFileW(folder.c_str(), FILE_ADD_FILE, kEveryone, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return lastError();
  CloseHandle(file);
  return {};
}

// Streams have no names here that lead to them.
std::optional<OutputTarget::Kind> ownStream(const fs::path&) {
  return {};
}

OpenStream::OpenStream(const OutputTarget& target)
    : path_(target.path), file_(reinterpret_cast<std::intptr_t>(opened(target))) {
  if (reinterpret_cast<HANDLE>(file_) != INVALID_HANDLE_VALUE) return;
  throw fs::filesystem_error("CreateFile", path_, lastError());
}

OpenStream::~OpenStream() {
  CloseHandle(reinterpret_cast<HANDLE>(file_));
}

void OpenStream::write(const char* bytes, std::size_t count) {
  while (count > 0) {
    const DWORD part = static_cast<DWORD>(std::min<std::size_t>(count, 1 << 20));
    DWORD written = 0;
    if (!WriteFile(reinterpret_cast<HANDLE>(file_), bytes, part, &written, nullptr)) {
      throw fs::filesystem_error("WriteFile", path_, lastError());
    }
    bytes += written;
    count -= written;
  }
}

}  // namespace vellumtide::cli
