// A signal that ends the process, as news that a long job can act on.
#pragma once

#include <functional>
#include <vector>

namespace vellumtide::cli {

// From now on a signal that ends the process has its reason said once and what is unfinished
// removed, and then ends it, within five seconds whatever its threads hang in. To be called once,
// before the first thread starts. Throws Failure when that is impossible.
void watchInterruptions();

// While one exists, the signal is its to answer; of several, the youngest's.
class Interruption {
 public:
  using Step = std::function<void(int)>;

  // `begin` (may be empty) is called at the first signal and leaves the job kGraceSeconds to end
  // the process by itself. After that the `last` steps are called with the signal, each on a thread
  // of its own because each may hang, and the process ends. A second Ctrl-C half a second or more
  // after the first cuts the grace short; other signals, which schedulers repeat, do not.
  Interruption(std::function<void()> begin, std::vector<Step> last);
  // Waits for the end of the process once the last steps have begun.
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  // The signal that came, 0 for none.
  static int signal();

  // With all that hangs four seconds, which leaves a busy machine one.
  static constexpr double kGraceSeconds = 2, kStepSeconds = 0.4, kRemovalSeconds = 0.8;

 private:
  friend class SignalAnswer;
  std::function<void()> begin_;
  std::vector<Step> last_;
};

// Removes what is unfinished (hidden files, scratch folders, child processes) and ends the process.
[[noreturn]] void endInterrupted(int signal);

}  // namespace vellumtide::cli
