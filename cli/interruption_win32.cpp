#include <windows.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <thread>
#include <utility>

#include "cli/interruption.h"

namespace vellumtide::cli {
namespace {

std::atomic<int> received{0};
HANDLE events = nullptr;  // counts console events and the end
std::atomic<bool> ended{false};
std::thread watcher;

BOOL WINAPI noteEvent(DWORD event) {
  int none = 0;
  received.compare_exchange_strong(none, event == CTRL_C_EVENT ? SIGINT : SIGTERM);
  ReleaseSemaphore(events, 1, nullptr);
  // Windows ends the process when this returns from a closing window, so it waits.
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

void watch(const std::function<void(int)>& begin, const std::function<void(int)>& late) {
  WaitForSingleObject(events, INFINITE);
  if (ended) return;
  const int signal = received;
  begin(signal);
  WaitForSingleObject(events, static_cast<DWORD>(Interruption::kGraceSeconds * 1000));
  if (ended) return;
  late(signal);
  endBySignal(signal);
}

}  // namespace

Interruption::Interruption(std::function<void(int)> begin, std::function<void(int)> late) {
  received = 0;
  ended = false;
  events = CreateSemaphoreW(nullptr, 0, 1000, nullptr);
  if (!events) throw std::runtime_error("no semaphore can be made");
  watcher = std::thread([begin = std::move(begin), late = std::move(late)] { watch(begin, late); });
  SetConsoleCtrlHandler(noteEvent, TRUE);
}

Interruption::~Interruption() {
  SetConsoleCtrlHandler(noteEvent, FALSE);
  ended = true;
  ReleaseSemaphore(events, 1, nullptr);
  watcher.join();
  CloseHandle(events);
}

int Interruption::signal() {
  return received;
}

void endBySignal(int signal) {
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(128 + signal));
  std::abort();
}

const char* signalName(int signal) {
  return signal == SIGINT ? "Ctrl-C" : "the console's end";
}

}  // namespace vellumtide::cli
