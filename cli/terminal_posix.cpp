#include <unistd.h>

#include "cli/progress.h"

namespace vellumtide::cli {

bool standardErrorIsTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

}  // namespace vellumtide::cli
