#include <windows.h>

#include <memory>

#include "core/utf.h"
#include "services/jst/file_system.h"
#include "services/jst/text.h"

namespace vellumtide::_JST {
namespace {

// Empty, which no call accepts, for a path longer than the plain calls take or with a NUL inside.
std::wstring widePath(std::string_view path) {
  if (path.find('\0') != path.npos) return {};
  const std::u16string units = toUTF16(path).units;
  if (units.size() >= MAX_PATH) return {};
  return std::wstring(units.begin(), units.end());
}

std::string narrowName(const wchar_t* name) {
  const std::wstring_view wide = name;
  return toUtf8(std::u16string(wide.begin(), wide.end()));
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
  const std::string_view narrow = mode;
  return _wfopen(wide.c_str(), std::wstring(narrow.begin(), narrow.end()).c_str());
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
