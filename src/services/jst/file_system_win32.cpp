#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdint>
#include <memory>

#include "core/utf.h"
#include "services/jst/file_system.h"

namespace vellumtide::_JST {
namespace {

// Empty, which no call accepts, for a path longer than the plain calls take or with a NUL inside.
std::wstring widePath(std::string_view path) {
  if (path.find('\0') != path.npos) return {};
  const std::u16string units = toUtf16(path).units;
  if (units.size() >= MAX_PATH) return {};
  return std::wstring(units.begin(), units.end());
}

std::string narrowName(const wchar_t* name) {
  const std::wstring_view wide = name;
  return toUtf8(std::u16string(wide.begin(), wide.end()));
}

struct CloseHandleOf {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<HANDLE, CloseHandleOf>;

struct Opening {
  DWORD access;
  DWORD creation;
  int streamFlags;
};

Opening openingOf(std::string_view mode) {
  if (mode.front() == 'w') return {GENERIC_WRITE, CREATE_ALWAYS, 0};
  if (mode.front() == 'a') return {GENERIC_WRITE, OPEN_ALWAYS, _O_APPEND};
  if (mode.find('+') == mode.npos) return {GENERIC_READ, OPEN_EXISTING, _O_RDONLY};
  return {GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, _O_RDWR};
}

// Pipes and consoles have another type than disks, and volumes have no file information.
bool isRegularFile(HANDLE file) {
  BY_HANDLE_FILE_INFORMATION known;
  return GetFileType(file) == FILE_TYPE_DISK && GetFileInformationByHandle(file, &known) &&
         !(known.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
}

struct CloseFind {
  using pointer = HANDLE;
  void operator()(HANDLE find) const { FindClose(find); }
};

}  // namespace

bool pathExists(std::string_view path) {
  return GetFileAttributesW(widePath(path).c_str()) != INVALID_FILE_ATTRIBUTES ||
         GetLastError() == ERROR_ACCESS_DENIED;
}

std::FILE* openStream(std::string_view path, const char* mode) {
  const std::wstring wide = widePath(path);
  if (wide.empty()) return nullptr;
  const Opening opening = openingOf(mode);
  // A pipe's other end must not act in the user's name.
  constexpr DWORD kFlags = FILE_ATTRIBUTE_NORMAL | SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION;
  const HANDLE made = CreateFileW(wide.c_str(), opening.access, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  nullptr, opening.creation, kFlags, nullptr);
  if (made == INVALID_HANDLE_VALUE) return nullptr;
  OwnedHandle file(made);
  if (!isRegularFile(made)) return nullptr;
  const int descriptor =
      _open_osfhandle(reinterpret_cast<std::intptr_t>(made), opening.streamFlags);
  if (descriptor < 0) return nullptr;
  file.release();
  std::FILE* stream = _fdopen(descriptor, mode);
  if (!stream) _close(descriptor);
  return stream;
}

bool eraseFile(std::string_view path) {
  return DeleteFileW(widePath(path).c_str()) != 0;
}

bool makeFolder(std::string_view path) {
  return CreateDirectoryW(widePath(path).c_str(), nullptr) != 0;
}

bool eraseFolder(std::string_view path) {
  return RemoveDirectoryW(widePath(path).c_str()) != 0;
}

std::vector<std::string> entryNames(std::string_view folder, EntryKind kind) {
  std::vector<std::string> names;
  const std::wstring pattern = widePath(std::string(folder) + "\\*.*");
  if (pattern.empty()) return names;
  WIN32_FIND_DATAW entry;
  HANDLE handle = FindFirstFileW(pattern.c_str(), &entry);
  if (handle == INVALID_HANDLE_VALUE) return names;
  const std::unique_ptr<HANDLE, CloseFind> find(handle);
  do {
    std::string name = narrowName(entry.cFileName);
    if (name == "." || name == "..") continue;
    const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (isFolder == (kind == EntryKind::Folder)) names.push_back(std::move(name));
  } while (FindNextFileW(find.get(), &entry));
  return names;
}

}  // namespace vellumtide::_JST
