#include <dlfcn.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "headless/module.h"

namespace vellumtide::headless {

std::shared_ptr<Module> Module::load(const std::string& path) {
  // A bare name would be looked for in the system's folders.
  const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
  void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) {
    const char* text = dlerror();
    throw ModuleError("cannot load the module " + path + ": " + (text ? text : "no reason given"));
  }
  void* symbol = dlsym(library, kEntryPointName);
  if (!symbol) {
    dlclose(library);
    throw ModuleError("the module " + path + " has no " + kEntryPointName);
  }
  EntryPoint* entryPoint = nullptr;
  std::memcpy(&entryPoint, &symbol, sizeof symbol);
  return std::shared_ptr<Module>(new Module(path, library, entryPoint));
}

Module::~Module() {
  if (library_) dlclose(library_);
}

std::string defaultModulePath() {
  std::string path(4096, '\0');
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
  path.resize(length > 0 ? static_cast<size_t>(length) : 0);
  const size_t slash = path.rfind('/');
  return (slash == std::string::npos ? "" : path.substr(0, slash + 1)) + "Vellumtide.so";
}

}  // namespace vellumtide::headless
