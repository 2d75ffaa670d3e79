// Frames done, frames to go, on standard error.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace vellumtide::cli {

// Whether a person looks at standard error.
bool standardErrorIsTerminal();

class Progress {
 public:
  // Writes nothing when `shown` is false. As a bar one line is rewritten, else each frame gets a
  // line.
  Progress(std::size_t total, bool shown, bool asBar = standardErrorIsTerminal());
  ~Progress();

  // `worked` is false for a frame that took no work; it does not count for the time left.
  void frameDone(const std::string& name, bool worked = true);
  // Moves off the line that is being rewritten, so that a message can be written.
  void breakLine();

 private:
  std::string timeLeft() const;

  std::size_t total_;
  std::size_t done_ = 0, worked_ = 0;
  bool shown_;
  bool asBar_;
  bool midLine_ = false;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace vellumtide::cli
