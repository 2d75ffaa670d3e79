// The shared objects that belong to the program, and where they are.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "headless/module.h"

namespace vellumtide::cli {

// The file of that name beside this program or in ../lib/vellumtide from there. Throws Failure
// (ExitStatus::Failed) that names both places.
std::filesystem::path findBesideProgram(const std::string& fileName);

// Loads the effect module: `path` when one is given, else the file that the environment variable
// VELLUMTIDE_MODULE names, else the one that belongs to this program. Throws Failure
// (ExitStatus::Failed).
std::shared_ptr<headless::Module> loadModule(const std::string& path);

}  // namespace vellumtide::cli
