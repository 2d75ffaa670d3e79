// Why the shaders of a program do not build, at the lines of the program's own file.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/build_errors/driver_message.h"
#include "cli/program/program_file.h"
#include "cli/program/source_place.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {

// One complaint, whichever stages and nodes it came from.
struct BuildError {
  bool isError = true;  // else a warning
  std::string file;
  std::optional<SourcePlace> place;  // nothing when it is about text that the file does not hold
  std::string message;               // may have further lines
  bool isCut = false;                // the message goes on where the module's log does not
  std::string excerpt;               // the source line and a caret, see SourceLines
  std::vector<std::string> nodes;    // of a graph
  std::vector<ShaderStage> stages;
  // Where there is no place: the line of the generated text and its number, 0 when not even that is
  // known.
  int generatedLine = 0;
  std::string generatedText;
};

// Reads the module's error log of a program that was loaded from `file`. Empty when the log says
// nothing of this program.
std::vector<BuildError> readBuildErrors(const Program& program, const std::string& file,
                                        const std::string& log);

// As people and editors read it: "file:line:column: error: message", the excerpt below. Ends with a
// line feed.
std::string textOf(const std::vector<BuildError>& errors);

// "vertex", "fragment" or "link".
const char* stageName(ShaderStage stage);

class BuildFailure : public Failure {
 public:
  BuildFailure(const std::string& message, std::vector<BuildError> found)
      : Failure(ExitStatus::Program, message), errors(std::move(found)) {}

  std::vector<BuildError> errors;
};

}  // namespace vellumtide::cli
