#include "cli/driver_log.h"

#include <fstream>
#include <string>

#include "cli/scratch_folder.h"
#include "cli/utf8_path.h"

namespace vellumtide::cli {

std::string exportDriverLog(headless::Host& host, headless::Effect& effect) {
  const ScratchFolder folder;
  headless::ScriptEngine& scripts = host.scripts();
  scripts.confirmAnswers.push_back(true);
  scripts.folderAnswers.push_back(utf8(folder.path()));
  // The information dialog exports too, but only for a program that is usable.
  host.about(&effect);
  scripts.confirmAnswers.clear();
  scripts.folderAnswers.clear();

  std::ifstream file(folder.path() / "Vellumtide_error_log.txt", std::ios::binary);
  std::string text, line;
  std::getline(file, line);  // names a platform, always the same
  while (std::getline(file, line)) {
    if (!line.empty()) text += line + "\n";
  }
  return text;
}

}  // namespace vellumtide::cli
