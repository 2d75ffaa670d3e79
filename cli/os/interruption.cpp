#include "cli/os/interruption.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include "cli/files/pending_file.h"
#include "cli/files/scratch_folder.h"
#include "cli/os/child_process.h"
#include "cli/os/signals.h"
#include "cli/text/failure.h"
#include "cli/text/messages.h"

namespace vellumtide::cli {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr Seconds kSameCtrlC{0.5};

std::atomic<int> received{0};
// Both outlive main(), which may end while the watching thread waits.
std::mutex& mutex = *new std::mutex;
std::vector<Interruption*>& jobs = *new std::vector<Interruption*>;

std::chrono::milliseconds milliseconds(Seconds time) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(time);
}

// Leaves the action behind when it takes longer.
void within(Seconds limit, std::function<void()> action) {
  struct Shared {
    std::mutex mutex;
    std::condition_variable changed;
    bool done = false;
  };
  const auto shared = std::make_shared<Shared>();
  std::thread([shared, action = std::move(action)] {
    action();
    const std::lock_guard lock(shared->mutex);
    shared->done = true;
    shared->changed.notify_all();
  }).detach();
  std::unique_lock lock(shared->mutex);
  shared->changed.wait_for(lock, limit, [&] { return shared->done; });
}

void waitOutGrace() {
  const Clock::time_point start = Clock::now();
  const Seconds grace(Interruption::kGraceSeconds);
  for (Seconds spent{0}; spent < grace; spent = Clock::now() - start) {
    const int again = nextSignal(milliseconds(grace - spent) + std::chrono::milliseconds(1));
    if (again == SIGINT && Clock::now() - start >= kSameCtrlC) return;
  }
}

void removeUnfinished() {
  abandonPendingFiles();
  endChildProcess();
  ScratchFolder::removeAll();
}

// In a signal handler.
void atCrash() {
  abandonPendingFiles();
  ScratchFolder::removeAllAtCrash();
}

void sayInterrupted(int signal) {
  say(std::string("interrupted by ") + signalName(signal));
}

}  // namespace

// What the watching thread does.
class SignalAnswer {
 public:
  static void run() {
    int signal = 0;
    while (signal == 0)
      signal = nextSignal(std::chrono::hours(1));
    received = signal;
    if (begun()) waitOutGrace();
    // No job ends from here on, nor do others begin.
    mutex.lock();
    restoreStreams();
    const std::vector<Interruption::Step> last =
        jobs.empty() ? std::vector<Interruption::Step>{sayInterrupted} : jobs.back()->last_;
    for (const Interruption::Step& step : last)
      within(Seconds(Interruption::kStepSeconds), [step, signal] { step(signal); });
    within(Seconds(Interruption::kRemovalSeconds), removeUnfinished);
    endBySignal(signal);
  }

 private:
  static bool begun() {
    const std::lock_guard lock(mutex);
    if (jobs.empty() || !jobs.back()->begin_) return false;
    jobs.back()->begin_();
    return true;
  }
};

void watchInterruptions() {
  takeSignals(atCrash);
  try {
    std::thread(SignalAnswer::run).detach();
  } catch (const std::system_error& error) {
    throw Failure(ExitStatus::Failed, "no thread can be started: " + error.code().message());
  }
}

Interruption::Interruption(std::function<void()> begin, std::vector<Step> last)
    : begin_(std::move(begin)), last_(std::move(last)) {
  const std::lock_guard lock(mutex);
  jobs.push_back(this);
}

Interruption::~Interruption() {
  const std::lock_guard lock(mutex);
  std::erase(jobs, this);
}

int Interruption::signal() {
  return received;
}

void endInterrupted(int signal) {
  removeUnfinished();
  endBySignal(signal);
}

}  // namespace vellumtide::cli
