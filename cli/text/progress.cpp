#include "cli/text/progress.h"

#include <cmath>
#include <cstdio>

namespace vellumtide::cli {
namespace {

constexpr std::size_t kBarWidth = 24;

std::string bar(std::size_t done, std::size_t total) {
  const std::size_t full = total == 0 ? kBarWidth : kBarWidth * done / total;
  std::string text = "[" + std::string(full, '=') + std::string(kBarWidth - full, ' ') + "]";
  if (full < kBarWidth) text[1 + full] = '>';
  return text;
}

}  // namespace

Progress::Progress(std::size_t total, bool shown, bool asBar)
    : total_(total), shown_(shown), asBar_(asBar) {}

Progress::~Progress() {
  breakLine();
}

void Progress::frameDone(const std::string& name, bool worked) {
  ++done_;
  worked_ += worked;
  if (!shown_) return;
  const std::string head = asBar_ ? "\r\033[K" + bar(done_, total_) + " " : "";
  std::fprintf(stderr, "%s%zu of %zu  %s%s%s", head.c_str(), done_, total_, name.c_str(),
               timeLeft().c_str(), asBar_ ? "" : "\n");
  midLine_ = asBar_;
  std::fflush(stderr);
}

void Progress::breakLine() {
  if (midLine_) std::fputc('\n', stderr);
  midLine_ = false;
}

// "  12 s left", "  1:05:00 left", "" when there is nothing to go by.
std::string Progress::timeLeft() const {
  if (worked_ == 0 || done_ == total_) return "";
  const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start_;
  const double left =
      spent.count() / static_cast<double>(worked_) * static_cast<double>(total_ - done_);
  char text[48];
  if (left < 100) {
    std::snprintf(text, sizeof text, "  %.1f s left", left);
  } else {
    const long seconds = std::lround(left);
    std::snprintf(text, sizeof text, "  %ld:%02ld:%02ld left", seconds / 3600, seconds / 60 % 60,
                  seconds % 60);
  }
  return text;
}

}  // namespace vellumtide::cli
