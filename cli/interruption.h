// INT, TERM and HUP (on Windows: the console's events) as news that a long job can act on.
#pragma once

#include <functional>

namespace vellumtide::cli {

class Interruption {
 public:
  // `begin`(signal) is called on a thread of its own at the first signal. When the process is still
  // running `kGraceSeconds` later, or at a second signal, `late`(signal) is called there and the
  // process ends by the signal. One object at a time.
  Interruption(std::function<void(int)> begin, std::function<void(int)> late);
  // The signals end the process again as they did before.
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  // The signal that came, 0 for none.
  static int signal();

  static constexpr double kGraceSeconds = 3;
};

// Ends the process as by that signal, so that a shell sees 128 + n.
[[noreturn]] void endBySignal(int signal);

// "SIGTERM".
const char* signalName(int signal);

}  // namespace vellumtide::cli
