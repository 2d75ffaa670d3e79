#include <windows.h>

#include "cli/files/file_stamp.h"

namespace vellumtide::cli {
namespace {

std::uint64_t joined(DWORD high, DWORD low) {
  return std::uint64_t{high} << 32 | low;
}

}  // namespace

FileStamp stampOf(const std::filesystem::path& path) {
  // Asks for no access, so that nobody who writes or replaces the file is in the way or hindered.
  const DWORD everyone = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE file = CreateFileW(path.c_str(), 0, everyone, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {};
  BY_HANDLE_FILE_INFORMATION about{};
  const bool isKnown = GetFileInformationByHandle(file, &about) != 0;
  CloseHandle(file);
  if (!isKnown) return {};
  const FILETIME& time = about.ftLastWriteTime;
  return {true, joined(about.nFileSizeHigh, about.nFileSizeLow),
          static_cast<std::int64_t>(joined(time.dwHighDateTime, time.dwLowDateTime)),
          joined(about.nFileIndexHigh, about.nFileIndexLow)};
}

}  // namespace vellumtide::cli
