#include <windows.h>

#include <cstring>
#include <string>

#include "headless/module.h"
#include "headless/wide_win32.h"

namespace vellumtide::headless {
namespace {

std::string lastErrorText() {
  const DWORD code = GetLastError();
  wchar_t text[512] = L"";
  FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                 512, nullptr);
  std::string narrowed = narrow(text);
  while (!narrowed.empty() && (narrowed.back() == '\n' || narrowed.back() == '\r')) {
    narrowed.pop_back();
  }
  return narrowed + " (error " + std::to_string(code) + ")";
}

}  // namespace

std::shared_ptr<Module> Module::load(const std::string& path) {
  // The loader wants back-slashes once a path is not found by name alone.
  std::wstring file = widen(path);
  for (wchar_t& c : file) {
    if (c == L'/') c = L'\\';
  }
  HMODULE library = LoadLibraryW(file.c_str());
  if (!library) throw ModuleError("cannot load the module " + path + ": " + lastErrorText());
  const FARPROC symbol = GetProcAddress(library, kEntryPointName);
  if (!symbol) {
    FreeLibrary(library);
    throw ModuleError("the module " + path + " has no " + kEntryPointName);
  }
  EntryPoint* entryPoint = nullptr;
  std::memcpy(&entryPoint, &symbol, sizeof symbol);
  return std::shared_ptr<Module>(new Module(path, library, entryPoint));
}

Module::~Module() {
  if (library_) FreeLibrary(static_cast<HMODULE>(library_));
}

std::string defaultModulePath() {
  std::wstring path(32768, L'\0');
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  const std::string narrowed = narrow(path.substr(0, length));
  const size_t slash = narrowed.find_last_of("/\\");
  return (slash == std::string::npos ? "" : narrowed.substr(0, slash + 1)) + "Vellumtide.aex";
}

}  // namespace vellumtide::headless
