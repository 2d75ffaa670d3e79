#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

#include "headless/output_capture.h"
#include "headless/wide_win32.h"

namespace vellumtide::headless {
namespace {

constexpr DWORD kDebugTextWide = 0x4001000A;
constexpr DWORD kDebugTextNarrow = 0x40010006;

std::string* debugSink = nullptr;

// OutputDebugString raises an exception that carries the text; without a debugger the first handler
// in the process sees it.
LONG CALLBACK takeDebugText(EXCEPTION_POINTERS* pointers) {
  const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
  const bool wide = record.ExceptionCode == kDebugTextWide;
  if (!debugSink || (!wide && record.ExceptionCode != kDebugTextNarrow) ||
      record.NumberParameters < 2) {
    return EXCEPTION_CONTINUE_SEARCH;
  }
  if (wide) {
    *debugSink += narrow(reinterpret_cast<const wchar_t*>(record.ExceptionInformation[1]));
  } else {
    *debugSink += reinterpret_cast<const char*>(record.ExceptionInformation[1]);
  }
  return EXCEPTION_CONTINUE_EXECUTION;
}

int openTemporary() {
  wchar_t folder[MAX_PATH + 1], file[MAX_PATH + 1];
  if (!GetTempPathW(MAX_PATH, folder) || !GetTempFileNameW(folder, L"vth", 0, file)) return -1;
  return _wopen(file, _O_RDWR | _O_TRUNC | _O_BINARY | _O_TEMPORARY);
}

// One stream that can be sent to a temporary file and back.
class Redirect {
 public:
  explicit Redirect(FILE* stream) : stream_(_fileno(stream)), file_(openTemporary()) {}
  ~Redirect() {
    if (file_ >= 0) _close(file_);
  }
  Redirect(const Redirect&) = delete;
  Redirect& operator=(const Redirect&) = delete;

  void start() {
    if (file_ < 0 || stream_ < 0 || saved_ >= 0) return;
    saved_ = _dup(stream_);
    _dup2(file_, stream_);
  }

  void stop() {
    if (saved_ < 0) return;
    _dup2(saved_, stream_);
    _close(saved_);
    saved_ = -1;
  }

  std::string take() {
    std::string text;
    if (file_ < 0) return text;
    text.resize(static_cast<size_t>(_lseek(file_, 0, SEEK_END)));
    _lseek(file_, 0, SEEK_SET);
    size_t done = 0;
    for (int got; done < text.size(); done += static_cast<size_t>(got)) {
      got = _read(file_, &text[done], static_cast<unsigned>(text.size() - done));
      if (got <= 0) break;
    }
    text.resize(done);
    _chsize(file_, 0);
    _lseek(file_, 0, SEEK_SET);
    return text;
  }

 private:
  int stream_;
  int file_;
  int saved_ = -1;
};

}  // namespace

struct OutputCapture::State {
  Redirect output{stdout};
  Redirect error{stderr};
  std::string debugText;
  void* handler = nullptr;
};

OutputCapture::OutputCapture() = default;
OutputCapture::~OutputCapture() {
  stop();
}

void OutputCapture::start() {
  if (!state_) state_ = std::make_unique<State>();
  if (state_->handler) return;
  std::fflush(stdout);
  std::fflush(stderr);
  state_->output.start();
  state_->error.start();
  debugSink = &state_->debugText;
  state_->handler = AddVectoredExceptionHandler(1, takeDebugText);
}

void OutputCapture::stop() {
  if (!state_ || !state_->handler) return;
  RemoveVectoredExceptionHandler(state_->handler);
  state_->handler = nullptr;
  debugSink = nullptr;
  std::fflush(stdout);
  std::fflush(stderr);
  state_->output.stop();
  state_->error.stop();
}

std::string OutputCapture::takeDebugOutput() {
  if (!state_) return "";
  std::string text;
  text.swap(state_->debugText);
  return text + state_->error.take();
}

std::string OutputCapture::takeStandardOutput() {
  return state_ ? state_->output.take() : "";
}

}  // namespace vellumtide::headless
