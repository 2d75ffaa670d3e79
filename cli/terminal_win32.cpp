#include <io.h>

#include <cstdio>

#include "cli/progress.h"

namespace vellumtide::cli {

bool standardErrorIsTerminal() {
  return _isatty(_fileno(stderr)) != 0;
}

}  // namespace vellumtide::cli
