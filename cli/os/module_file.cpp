#include "cli/os/module_file.h"

#include <cstdlib>
#include <filesystem>

#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

fs::path findModule(const std::string& path) {
  if (!path.empty()) return pathOf(path);
  if (const char* named = std::getenv("VELLUMTIDE_MODULE"); named && *named) {
    return pathOf(named);
  }
  return findBesideProgram(utf8(pathOf(headless::defaultModulePath()).filename()));
}

}  // namespace

fs::path findBesideProgram(const std::string& fileName) {
  const fs::path folder = pathOf(headless::defaultModulePath()).parent_path();
  const fs::path beside = folder / pathOf(fileName);
  const fs::path installed = folder.parent_path() / "lib" / "vellumtide" / pathOf(fileName);
  std::error_code ignored;
  for (const fs::path& place : {beside, installed}) {
    if (fs::is_regular_file(place, ignored)) return place;
  }
  throw Failure(ExitStatus::Failed, fileName + " is missing: neither " + utf8(beside) + " nor " +
                                        utf8(installed) + " is there");
}

std::optional<fs::path> moduleFile(const std::string& path) {
  try {
    return findModule(path);
  } catch (const Failure&) {
    return {};
  }
}

std::shared_ptr<headless::Module> loadModule(const std::string& path) {
  const fs::path file = findModule(path);
  std::error_code ignored;
  if (!fs::is_regular_file(file, ignored)) {
    throw Failure(
        ExitStatus::Failed,
        utf8(file) + ": there is no such module file (see --module and VELLUMTIDE_MODULE)");
  }
  try {
    return headless::Module::load(utf8(file));
  } catch (const headless::ModuleError& error) {
    throw Failure(ExitStatus::Failed, error.what());
  }
}

}  // namespace vellumtide::cli
