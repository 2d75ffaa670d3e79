#include "cli/text/terminal.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "cli/text/progress.h"

namespace vellumtide::cli {

bool isTerminal(Stream stream) {
  return isatty(stream == Stream::Out ? STDOUT_FILENO : STDERR_FILENO) == 1;
}

bool isColorTerminal(Stream stream) {
  const char* kind = std::getenv("TERM");
  return kind != nullptr && *kind != '\0' && std::string_view(kind) != "dumb" && isTerminal(stream);
}

bool standardErrorIsTerminal() {
  return isTerminal(Stream::Error);
}

}  // namespace vellumtide::cli
