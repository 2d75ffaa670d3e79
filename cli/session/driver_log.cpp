#include "cli/session/driver_log.h"

#include <fstream>
#include <iterator>
#include <string>

#include "cli/files/scratch_folder.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {

DriverLog exportDriverLog(headless::Host& host, headless::Effect& effect) {
  const ScratchFolder folder;
  headless::ScriptEngine& scripts = host.scripts();
  scripts.confirmAnswers.push_back(true);
  scripts.folderAnswers.push_back(utf8(folder.path()));
  // The information dialog exports too, but only for a program that is usable.
  host.about(&effect);
  scripts.confirmAnswers.clear();
  scripts.folderAnswers.clear();

  std::ifstream file(folder.path() / "Vellumtide_error_log.txt", std::ios::binary);
  DriverLog log;
  std::string line;
  std::getline(file, line);  // names a platform, always the same
  for (const std::string mark : {"vendor : ", "version : ", "glsl : "}) {
    std::getline(file, line);
    while (line.ends_with('\r'))
      line.pop_back();
    if (!line.starts_with(mark)) continue;
    log.driver += (log.driver.empty() ? "" : ", ") + std::string(mark == "glsl : " ? "GLSL " : "") +
                  line.substr(mark.size());
  }
  log.errors.assign(std::istreambuf_iterator<char>(file), {});
  return log;
}

}  // namespace vellumtide::cli
