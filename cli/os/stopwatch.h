#pragma once

#include <chrono>

namespace vellumtide::cli {

class Stopwatch {
 public:
  double milliseconds() const {
    const std::chrono::duration<double, std::milli> spent = Clock::now() - start_;
    return spent.count();
  }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point start_ = Clock::now();
};

}  // namespace vellumtide::cli
