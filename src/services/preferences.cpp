#include "services/preferences.h"

#include "services/aeo/persistent_data.h"
#include "services/basic_suite.h"
#include "services/jst/jst.h"
#include "services/script_bridge.h"

namespace vellumtide {
namespace {

constexpr int kDeepestFolder = 2;

std::optional<std::string> findInFolder(const HostFolder& folder, std::string_view fileName,
                                        int depth) {
  HostText wanted = folder.path();
  wanted += "\\";
  wanted += fileName;
  for (const HostText& file : folder.listFiles()) {
    if (file == wanted.view()) return file.str();
  }
  if (depth == kDeepestFolder) return std::nullopt;
  for (const HostText& path : folder.listFolders()) {
    if (auto found = findInFolder(HostFolder(path), fileName, depth + 1)) return found;
  }
  return std::nullopt;
}

std::string joinPath(std::string_view folder, std::string_view name) {
  return std::string(folder) + "/" + std::string(name);
}

void writeNewFile(const std::string& path, const void* data, std::size_t size) {
  HostFile file(path);
  if (file.exists() || !file.open('w')) return;
  const bool written = file.write(data, size);
  // Half a file would never be replaced.
  if (!file.close() || !written) file.remove();
}

}  // namespace

std::string readRootFolder(PF_InData* in_data) {
  AEO::PersistentData settings(basicSuiteOf(in_data));
  return settings.getString("Settings_cs_VTD_Launcher", "rootFolder");
}

std::optional<std::string> findUnderRootFolder(std::string_view root, std::string_view fileName) {
  const HostFolder folder(root);
  if (fileName.empty() || !folder.exists()) return std::nullopt;
  return findInFolder(folder, fileName, 0);
}

PF_Err getWorkingFolder(PF_InData* in_data, std::string& path) {
  return executeScript(in_data, "Folder(Folder.userData.fsName+\"/Orrinwald\").fsName;", path);
}

PF_Err writeWorkingFile(PF_InData* in_data, std::string_view subFolder, std::string_view fileName,
                        const void* data, std::size_t size) {
  std::string path;
  const PF_Err error = getWorkingFolder(in_data, path);
  if (path.empty()) return 1;
  HostFolder working(path);
  if (!working.exists() && !working.create()) return 1;
  HostFolder inner(joinPath(path, subFolder));
  if (!inner.exists()) inner.create();
  writeNewFile(joinPath(inner.path(), fileName), data, size);
  return error;
}

PF_Err removeWorkingFile(PF_InData* in_data, std::string_view subFolder,
                         std::string_view fileName) {
  std::string path;
  const PF_Err error = getWorkingFolder(in_data, path);
  HostFolder inner(joinPath(path, subFolder));
  HostFile file(joinPath(inner.path(), fileName));
  if (file.exists()) file.remove();
  if (inner.exists()) inner.remove();
  HostFolder working(path);
  if (working.exists()) working.remove();
  return error;
}

}  // namespace vellumtide
