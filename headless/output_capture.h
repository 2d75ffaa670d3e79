// Captures what a module writes to standard output, standard error and the debugger.
#pragma once

#include <memory>
#include <string>

namespace vellumtide::headless {

class OutputCapture {
 public:
  OutputCapture();
  ~OutputCapture();  // stops

  // From start to stop both streams go to a file of their own; starting twice changes nothing.
  void start();
  void stop();
  // What came since the last take. The debug output is standard error here, the debugger's text on
  // Windows.
  std::string takeDebugOutput();
  std::string takeStandardOutput();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace vellumtide::headless
