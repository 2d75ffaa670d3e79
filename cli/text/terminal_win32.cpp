#include "cli/text/terminal.h"

#include <io.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "cli/text/progress.h"

namespace vellumtide::cli {

bool isTerminal(Stream stream) {
  return _isatty(_fileno(stream == Stream::Out ? stdout : stderr)) != 0;
}

bool isColorTerminal(Stream stream) {
  const char* kind = std::getenv("TERM");
  if (kind != nullptr && std::string_view(kind) == "dumb") return false;
  const HANDLE console = GetStdHandle(stream == Stream::Out ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
  DWORD mode = 0;
  return isTerminal(stream) && GetConsoleMode(console, &mode) != 0 &&
         SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

bool standardErrorIsTerminal() {
  return isTerminal(Stream::Error);
}

}  // namespace vellumtide::cli
