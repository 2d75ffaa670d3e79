#include "cli/progress.h"

#include <cstdio>

namespace vellumtide::cli {

Progress::Progress(std::size_t total, bool shown)
    : total_(total), shown_(shown), terminal_(standardErrorIsTerminal()) {}

Progress::~Progress() {
  breakLine();
}

void Progress::frameDone(const std::string& name) {
  ++done_;
  if (!shown_) return;
  const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start_;
  const double left =
      spent.count() / static_cast<double>(done_) * static_cast<double>(total_ - done_);
  std::fprintf(stderr, "%s%zu of %zu  %s  %.1f s left%s", terminal_ ? "\r\033[K" : "", done_,
               total_, name.c_str(), left, terminal_ ? "" : "\n");
  midLine_ = terminal_;
  std::fflush(stderr);
}

void Progress::breakLine() {
  if (midLine_) std::fputc('\n', stderr);
  midLine_ = false;
}

}  // namespace vellumtide::cli
