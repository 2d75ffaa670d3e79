#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <thread>
#include <utility>

#include "cli/interruption.h"

namespace vellumtide::cli {
namespace {

constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};

std::atomic<int> received{0};
std::array<int, 2> wakeUp{-1, -1};
std::array<struct sigaction, kSignals.size()> before;
// The process's own streams: a headless host that captures its module's output has them elsewhere.
std::array<int, 2> streams{-1, -1};
std::thread watcher;

extern "C" void noteSignal(int signalNumber) {
  const int savedError = errno;
  int none = 0;
  received.compare_exchange_strong(none, signalNumber);
  const char byte = 's';
  [[maybe_unused]] const ssize_t written = write(wakeUp[1], &byte, 1);
  errno = savedError;
}

// 's' for a signal, 'e' for the end, 0 when nothing came within the time.
char nextEvent(int milliseconds) {
  pollfd readable{wakeUp[0], POLLIN, 0};
  while (poll(&readable, 1, milliseconds) < 0 && errno == EINTR) {
  }
  char byte = 0;
  if ((readable.revents & POLLIN) != 0 && read(wakeUp[0], &byte, 1) == 1) return byte;
  return 0;
}

void watch(const std::function<void(int)>& begin, const std::function<void(int)>& late) {
  if (nextEvent(-1) != 's') return;
  const int signal = received;
  begin(signal);
  if (nextEvent(static_cast<int>(Interruption::kGraceSeconds * 1000)) == 'e') return;
  for (int stream : {STDOUT_FILENO, STDERR_FILENO})
    dup2(streams[stream - STDOUT_FILENO], stream);
  late(signal);
  endBySignal(signal);
}

}  // namespace

Interruption::Interruption(std::function<void(int)> begin, std::function<void(int)> late) {
  received = 0;
  if (pipe2(wakeUp.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe can be made");
  for (int stream : {STDOUT_FILENO, STDERR_FILENO}) {
    streams[stream - STDOUT_FILENO] = fcntl(stream, F_DUPFD_CLOEXEC, 0);
  }
  watcher = std::thread([begin = std::move(begin), late = std::move(late)] { watch(begin, late); });
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    struct sigaction action {};
    action.sa_handler = noteSignal;
    action.sa_flags = SA_RESTART;
    sigaction(kSignals[i], &action, &before[i]);
    // nohup and shells in the background hand ignored signals on.
    if (before[i].sa_handler == SIG_IGN) sigaction(kSignals[i], &before[i], nullptr);
  }
}

Interruption::~Interruption() {
  for (std::size_t i = 0; i < kSignals.size(); ++i)
    sigaction(kSignals[i], &before[i], nullptr);
  const char byte = 'e';
  [[maybe_unused]] const ssize_t written = write(wakeUp[1], &byte, 1);
  watcher.join();
  for (int file : {wakeUp[0], wakeUp[1], streams[0], streams[1]})
    close(file);
}

int Interruption::signal() {
  return received;
}

void endBySignal(int signal) {
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  sigaction(signal, &action, nullptr);
  sigset_t only;
  sigemptyset(&only);
  sigaddset(&only, signal);
  pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
  kill(getpid(), signal);
  while (true)
    pause();
}

const char* signalName(int signal) {
  return signal == SIGINT ? "SIGINT" : signal == SIGTERM ? "SIGTERM" : "SIGHUP";
}

}  // namespace vellumtide::cli
