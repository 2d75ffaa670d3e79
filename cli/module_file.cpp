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
  const fs::path beside = headless::defaultModulePath();
  const fs::path installed =
      beside.parent_path().parent_path() / "lib" / "vellumtide" / beside.filename();
  std::error_code ignored;
  for (const fs::path& place : {beside, installed}) {
    if (fs::is_regular_file(place, ignored)) return place;
  }
  throw Failure(ExitStatus::Failed, "the module is neither " + beside.string() + " nor " +
                                        installed.string() +
                                        "; name it with --module or VELLUMTIDE_MODULE");
}

}  // namespace

std::shared_ptr<headless::Module> loadModule(const std::string& path) {
  const fs::path file = findModule(path);
  std::error_code ignored;
  if (!fs::is_regular_file(file, ignored)) {
    throw Failure(ExitStatus::Failed, file.string() + ": there is no such module file");
  }
  try {
    return headless::Module::load(file.string());
  } catch (const headless::ModuleError& error) {
    throw Failure(ExitStatus::Failed, error.what());
  }
}

}  // namespace vellumtide::cli
