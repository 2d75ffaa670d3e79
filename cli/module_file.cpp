#include "cli/module_file.h"

#include <cstdlib>
#include <filesystem>

#include "cli/failure.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

fs::path findModule(const std::string& path) {
  if (!path.empty()) return path;
  if (const char* named = std::getenv("VELLUMTIDE_MODULE"); named && *named) return named;
  return findBesideProgram(fs::path(headless::defaultModulePath()).filename().string());
}

}  // namespace

fs::path findBesideProgram(const std::string& fileName) {
  const fs::path folder = fs::path(headless::defaultModulePath()).parent_path();
  const fs::path beside = folder / fileName;
  const fs::path installed = folder.parent_path() / "lib" / "vellumtide" / fileName;
  std::error_code ignored;
  for (const fs::path& place : {beside, installed}) {
    if (fs::is_regular_file(place, ignored)) return place;
  }
  throw Failure(ExitStatus::Failed, fileName + " is missing: neither " + beside.string() + " nor " +
                                        installed.string() + " is there");
}

std::shared_ptr<headless::Module> loadModule(const std::string& path) {
  const fs::path file = findModule(path);
  std::error_code ignored;
  if (!fs::is_regular_file(file, ignored)) {
    throw Failure(
        ExitStatus::Failed,
        file.string() + ": there is no such module file (see --module and VELLUMTIDE_MODULE)");
  }
  try {
    return headless::Module::load(file.string());
  } catch (const headless::ModuleError& error) {
    throw Failure(ExitStatus::Failed, error.what());
  }
}

}  // namespace vellumtide::cli
