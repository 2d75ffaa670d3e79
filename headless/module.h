// An effect module loaded from its file, known only by its entry point.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "aeapi/aeapi.h"

namespace vellumtide::headless {

// The module's file or its entry point could not be had; what() names the file and holds the
// loader's text.
struct ModuleError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Module {
 public:
  // Loads the file (UTF-8 path; symbols resolved at once and kept to itself) and finds
  // EntryPointFunc. Throws ModuleError.
  static std::shared_ptr<Module> load(const std::string& path);
  // A module that is part of the running program.
  static std::shared_ptr<Module> inProcess(EntryPoint* entryPoint);
  // Unloads the file.
  ~Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  EntryPoint* entryPoint() const { return entryPoint_; }
  const std::string& path() const { return path_; }
  // The file's name without folder and extension.
  std::string name() const;

 private:
  Module(std::string path, void* library, EntryPoint* entry)
      : path_(std::move(path)), library_(library), entryPoint_(entry) {}

  std::string path_;
  void* library_;
  EntryPoint* entryPoint_;
};

// The module file that lies beside the running program: "Vellumtide.so", on Windows
// "Vellumtide.aex".
std::string defaultModulePath();

}  // namespace vellumtide::headless
