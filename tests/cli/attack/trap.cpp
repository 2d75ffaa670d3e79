// Preloaded into the program: makes it hang at a chosen call, as a dead file server or driver does,
// and sends it signals at that very moment, so that no test has to wait for a stage.
//
//   TRAP_CALL     open (every way to open a file), rename, eglInitialize or glReadPixels
//   TRAP_NAME     for the first two: part of the file's name
//   TRAP_SIGNALS  numbers, sent to the process one after the other
//   TRAP_STAMP    file that then gets the time in nanoseconds since 1970
//   TRAP_GAP      milliseconds after each of them
//   TRAP_PASSES   milliseconds after which the call goes on, once the signals were taken
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

std::atomic<bool> sprung{false};

bool isTrap(const char* call, const char* name) {
  const char* wanted = std::getenv("TRAP_CALL");
  const char* part = std::getenv("TRAP_NAME");
  if (wanted == nullptr || std::strcmp(wanted, call) != 0) return false;
  if (part != nullptr && std::strstr(name, part) == nullptr) return false;
  return !sprung.exchange(true);
}

void writeStamp() {
  const char* name = std::getenv("TRAP_STAMP");
  FILE* file = name != nullptr ? std::fopen(name, "w") : nullptr;
  if (file == nullptr) return;
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  std::fprintf(file, "%lld\n", static_cast<long long>(now.tv_sec) * 1000000000 + now.tv_nsec);
  std::fclose(file);
}

bool isPending() {
  sigset_t pending;
  sigpending(&pending);
  for (int signal = 1; signal < NSIG; ++signal) {
    if (sigismember(&pending, signal) == 1) return true;
  }
  return false;
}

void pass(const char* milliseconds) {
  const long time = milliseconds != nullptr ? std::strtol(milliseconds, nullptr, 10) : 0;
  const timespec pause{time / 1000, time % 1000 * 1000000};
  nanosleep(&pause, nullptr);
}

void spring(const char* call, const char* name = "") {
  if (!isTrap(call, name)) return;
  writeStamp();
  if (const char* signals = std::getenv("TRAP_SIGNALS")) {
    char* rest = const_cast<char*>(signals);
    while (const long signal = std::strtol(rest, &rest, 10)) {
      kill(getpid(), static_cast<int>(signal));
      // Of two that are pending at a time the system makes one.
      while (isPending())
        pass("1");
      pass(std::getenv("TRAP_GAP"));
    }
  }
  const char* const passes = std::getenv("TRAP_PASSES");
  pass(passes);
  while (passes == nullptr)
    pause();
}

template <typename Function>
Function next(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

int open(const char* name, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const unsigned mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, unsigned) : 0;
  va_end(arguments);
  spring("open", name);
  return next<int (*)(const char*, int, ...)>("open")(name, flags, mode);
}

int open64(const char* name, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const unsigned mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, unsigned) : 0;
  va_end(arguments);
  spring("open", name);
  return next<int (*)(const char*, int, ...)>("open64")(name, flags, mode);
}

FILE* fopen(const char* name, const char* mode) {
  spring("open", name);
  return next<FILE* (*)(const char*, const char*)>("fopen")(name, mode);
}

FILE* fopen64(const char* name, const char* mode) {
  spring("open", name);
  return next<FILE* (*)(const char*, const char*)>("fopen64")(name, mode);
}

int rename(const char* from, const char* to) {
  spring("rename", to);
  return next<int (*)(const char*, const char*)>("rename")(from, to);
}

unsigned eglInitialize(void* display, int* major, int* minor) {
  spring("eglInitialize");
  return next<unsigned (*)(void*, int*, int*)>("eglInitialize")(display, major, minor);
}

void glReadPixels(int x, int y, int width, int height, unsigned format, unsigned type, void* data) {
  spring("glReadPixels");
  next<void (*)(int, int, int, int, unsigned, unsigned, void*)>("glReadPixels")(x, y, width, height,
                                                                                format, type, data);
}
}
#pragma GCC visibility pop
