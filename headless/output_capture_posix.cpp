#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "headless/output_capture.h"

namespace vellumtide::headless {
namespace {

// One stream that can be sent to a file without a name and back.
class Redirect {
 public:
  // Throws system_error. The file is in memory: folders for temporary files may be full or absent.
  explicit Redirect(int stream)
      : stream_(stream), file_(memfd_create("captured output", MFD_CLOEXEC)) {
    if (file_ < 0) {
      throw std::system_error(errno, std::generic_category(), "the module's output has no place");
    }
  }
  ~Redirect() { close(file_); }
  Redirect(const Redirect&) = delete;
  Redirect& operator=(const Redirect&) = delete;

  void start() {
    if (saved_ >= 0) return;
    saved_ = fcntl(stream_, F_DUPFD_CLOEXEC, 0);
    dup2(file_, stream_);
  }

  void stop() {
    if (saved_ < 0) return;
    dup2(saved_, stream_);
    close(saved_);
    saved_ = -1;
  }

  std::string take() {
    std::string text;
    text.resize(static_cast<size_t>(lseek(file_, 0, SEEK_END)));
    size_t done = 0;
    for (ssize_t got; done < text.size(); done += static_cast<size_t>(got)) {
      got = pread(file_, &text[done], text.size() - done, static_cast<off_t>(done));
      if (got <= 0) break;
    }
    text.resize(done);
    if (ftruncate(file_, 0) == 0) lseek(file_, 0, SEEK_SET);
    return text;
  }

 private:
  int stream_;
  int file_;
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
