// The shared objects that belong to the program, and where they are.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "headless/module.h"

namespace vellumtide::cli {

// The file of that name beside this program or in ../lib/vellumtide from there. Throws Failure
// (ExitStatus::Failed) that names both places.
std::filesystem::path findBesideProgram(const std::string& fileName);

// The file of the effect module: `path` when one is given, else the one that the environment
// variable VELLUMTIDE_MODULE names, else the one that belongs to this program. Nothing when there
// is none of these.
std::optional<std::filesystem::path> moduleFile(const std::string& path);

// Loads the effect module of moduleFile(). Throws Failure (ExitStatus::Failed).
std::shared_ptr<headless::Module> loadModule(const std::string& path);

}  // namespace vellumtide::cli
