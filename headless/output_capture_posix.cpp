#include <unistd.h>

#include <cstdio>

#include "headless/output_capture.h"

namespace vellumtide::headless {
namespace {

// One stream that can be sent to a file without a name and back.
class Redirect {
 public:
  explicit Redirect(int stream) : stream_(stream), file_(std::tmpfile()) {}
  ~Redirect() {
    if (file_) std::fclose(file_);
  }
  Redirect(const Redirect&) = delete;
  Redirect& operator=(const Redirect&) = delete;

  void start() {
    if (!file_ || saved_ >= 0) return;
    saved_ = dup(stream_);
    dup2(fileno(file_), stream_);
  }

  void stop() {
    if (saved_ < 0) return;
    dup2(saved_, stream_);
    close(saved_);
    saved_ = -1;
  }

  std::string take() {
    std::string text;
    if (!file_) return text;
    const int file = fileno(file_);
    text.resize(static_cast<size_t>(lseek(file, 0, SEEK_END)));
    size_t done = 0;
    for (ssize_t got; done < text.size(); done += static_cast<size_t>(got)) {
      got = pread(file, &text[done], text.size() - done, static_cast<off_t>(done));
      if (got <= 0) break;
    }
    text.resize(done);
    if (ftruncate(file, 0) == 0) lseek(file, 0, SEEK_SET);
    return text;
  }

 private:
  int stream_;
  FILE* file_;
  int saved_ = -1;
};

void flushAll() {
  std::fflush(stdout);
  std::fflush(stderr);
}

}  // namespace

struct OutputCapture::State {
  Redirect output{STDOUT_FILENO};
  Redirect debug{STDERR_FILENO};
};

OutputCapture::OutputCapture() = default;
OutputCapture::~OutputCapture() {
  stop();
}

void OutputCapture::start() {
  if (!state_) state_ = std::make_unique<State>();
  flushAll();
  state_->output.start();
  state_->debug.start();
}

void OutputCapture::stop() {
  if (!state_) return;
  flushAll();
  state_->output.stop();
  state_->debug.stop();
}

std::string OutputCapture::takeDebugOutput() {
  return state_ ? state_->debug.take() : "";
}
std::string OutputCapture::takeStandardOutput() {
  return state_ ? state_->output.take() : "";
}

}  // namespace vellumtide::headless
