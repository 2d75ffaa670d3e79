#pragma once

#include <memory>
#include <string>

#include "headless/module.h"

namespace vellumtide::cli {

// Loads the effect module: `path` when one is given, else the file that the environment variable
// VELLUMTIDE_MODULE names, else the one beside this program or in ../lib/vellumtide from there.
// Throws Failure (ExitStatus::Failed) that names the places.
std::shared_ptr<headless::Module> loadModule(const std::string& path);

}  // namespace vellumtide::cli
