#include <windows.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include "cli/os/signals.h"

namespace vellumtide::cli {
namespace {

std::atomic<int> last{0};
HANDLE events = nullptr;  // counts the console's events

BOOL WINAPI noteEvent(DWORD event) {
  last = event == CTRL_C_EVENT ? SIGINT : SIGTERM;
  ReleaseSemaphore(events, 1, nullptr);
  // Windows ends the process when this returns from a closing window, so it waits.
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

}  // namespace

void takeSignals(void (*)()) {
  events = CreateSemaphoreW(nullptr, 0, 1000, nullptr);
  if (!events) throw std::runtime_error("no semaphore can be made");
  SetConsoleCtrlHandler(noteEvent, TRUE);
}

int nextSignal(std::chrono::milliseconds time) {
  const auto limit = static_cast<DWORD>(std::min<long long>(time.count(), INFINITE - 1LL));
  return WaitForSingleObject(events, limit) == WAIT_OBJECT_0 ? last.load() : 0;
}

// Messages are written with the C library, which the capture sends back by itself.
void restoreStreams() {}

void endBySignal(int signal) {
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(128 + signal));
  std::abort();
}

const char* signalName(int signal) {
  return signal == SIGINT ? "Ctrl-C" : "the console's end";
}

}  // namespace vellumtide::cli
