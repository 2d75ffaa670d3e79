#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <iterator>
#include <vector>

#include "cli/os/signals.h"

namespace vellumtide::cli {
namespace {

struct Named {
  int number;
  const char* name;
};
constexpr Named kEnding[] = {
    {SIGINT, "SIGINT"},   {SIGTERM, "SIGTERM"}, {SIGHUP, "SIGHUP"},       {SIGQUIT, "SIGQUIT"},
    {SIGXCPU, "SIGXCPU"}, {SIGUSR1, "SIGUSR1"}, {SIGUSR2, "SIGUSR2"},     {SIGALRM, "SIGALRM"},
    {SIGPROF, "SIGPROF"}, {SIGPOLL, "SIGPOLL"}, {SIGVTALRM, "SIGVTALRM"},
};
constexpr int kCrashes[] = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGSYS, SIGTRAP};

sigset_t awaited;
// A headless host that captures its module's output has the process's own streams elsewhere.
std::array<int, 2> streams{-1, -1};
void (*crashed)() = nullptr;

bool has(int signal, void (*disposition)(int)) {
  struct sigaction now {};
  sigaction(signal, nullptr, &now);
  return now.sa_handler == disposition;
}

extern "C" void endCrashed(int signal) {
  crashed();
  raise(signal);  // the handler is gone already
}

void watchCrashes() {
  static std::array<char, 65536> stack;  // a stack that overflowed is of no use to a handler
  const stack_t other{stack.data(), 0, stack.size()};
  sigaltstack(&other, nullptr);
  for (const int signal : kCrashes) {
    struct sigaction action {};
    action.sa_handler = endCrashed;
    action.sa_flags = static_cast<int>(SA_ONSTACK | SA_RESETHAND | SA_NODEFER);
    if (has(signal, SIG_DFL)) sigaction(signal, &action, nullptr);
  }
}

}  // namespace

void takeSignals(void (*atCrash)()) {
  for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
    streams[stream - STDOUT_FILENO] = fcntl(stream, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  for (const int signal : {SIGPIPE, SIGXFSZ})
    std::signal(signal, SIG_IGN);
  sigemptyset(&awaited);
  std::vector<int> ending;
  for (const Named& signal : kEnding)
    ending.push_back(signal.number);
  for (int signal = SIGRTMIN; signal <= SIGRTMAX; ++signal)
    ending.push_back(signal);
  for (const int signal : ending) {
    // nohup and shells in the background hand ignored signals on.
    if (!has(signal, SIG_IGN)) sigaddset(&awaited, signal);
  }
  pthread_sigmask(SIG_BLOCK, &awaited, nullptr);
  crashed = atCrash;
  watchCrashes();
}

int nextSignal(std::chrono::milliseconds time) {
  const timespec limit{static_cast<std::time_t>(time.count() / 1000),
                       static_cast<long>(time.count() % 1000) * 1000000};
  return std::max(sigtimedwait(&awaited, nullptr, &limit), 0);
}

void restoreStreams() {
  for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
    const int own = streams[stream - STDOUT_FILENO];
    if (own >= 0) dup2(own, stream);
  }
}

void endBySignal(int signal) {
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  sigaction(signal, &action, nullptr);
  sigset_t only;
  sigemptyset(&only);
  sigaddset(&only, signal);
  pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
  raise(signal);  // to this thread: another one waits for signals
  while (true)
    pause();
}

const char* signalName(int signal) {
  const auto* found = std::find_if(std::begin(kEnding), std::end(kEnding),
                                   [signal](const Named& n) { return n.number == signal; });
  return found == std::end(kEnding) ? "a signal" : found->name;
}

}  // namespace vellumtide::cli
