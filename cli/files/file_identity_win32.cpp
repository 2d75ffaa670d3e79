#include <windows.h>

#include <string>

#include "cli/files/file_identity.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

std::optional<FileIdentity> identityOfExisting(const fs::path& path) {
  // Asks for no access, so that nobody who writes or replaces the file is in the way or hindered.
  const HANDLE file =
      CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {};
  BY_HANDLE_FILE_INFORMATION about{};
  const bool isKnown =
      GetFileType(file) == FILE_TYPE_DISK && GetFileInformationByHandle(file, &about) != 0;
  CloseHandle(file);
  if (!isKnown) return {};
  return FileIdentity{about.dwVolumeSerialNumber,
                      std::uint64_t{about.nFileIndexHigh} << 32 | about.nFileIndexLow,
                      {}};
}

}  // namespace

std::optional<FileIdentity> identityOf(const fs::path& path) {
  if (auto existing = identityOfExisting(path)) return existing;
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  std::optional<FileIdentity> identity = identityOfExisting(folder);
  if (!identity) return {};
  // Names that differ in case alone are one name here.
  std::wstring name = path.filename().wstring();
  CharLowerW(name.data());
  identity->name = name;
  return identity;
}

}  // namespace vellumtide::cli
