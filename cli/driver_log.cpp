#include "cli/driver_log.h"

#include <fstream>
#include <iterator>

#include "cli/scratch_folder.h"

namespace vellumtide::cli {

std::string exportDriverLog(headless::Host& host, headless::Effect& effect) {
  const ScratchFolder folder;
  headless::ScriptEngine& scripts = host.scripts();
  scripts.confirmAnswers.push_back(true);
  scripts.folderAnswers.push_back(folder.path().string());
  host.doDialog(effect);
  scripts.confirmAnswers.clear();
  scripts.folderAnswers.clear();

  std::ifstream file(folder.path() / "Vellumtide_error_log.txt", std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  // The first line names a platform, always the same.
  const std::size_t firstEnd = text.find('\n');
  return firstEnd == std::string::npos ? "" : text.substr(firstEnd + 1);
}

}  // namespace vellumtide::cli
