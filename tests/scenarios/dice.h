// Numbers from a seed, the same on every platform.
#pragma once

#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <iterator>
#include <random>
#include <string>

namespace vellumtide::scenarios {

class Dice {
 public:
  explicit Dice(std::uint64_t seed) : numbers_(seed * 2654435761u + 1) {}

  // 0 to count - 1.
  int below(int count) { return static_cast<int>(numbers_() % static_cast<unsigned>(count)); }
  int between(int low, int high) { return low + below(high - low + 1); }
  bool oneIn(int count) { return below(count) == 0; }
  template <class T>
  T pick(std::initializer_list<T> choices) {
    return choices.begin()[below(static_cast<int>(choices.size()))];
  }
  template <class Choices>
  const auto& pick(const Choices& choices) {
    return *std::next(choices.begin(), below(static_cast<int>(choices.size())));
  }
  // "-1.25": sixteenths, exact in every format.
  std::string number(int low, int high) {
    char text[32];
    std::snprintf(text, sizeof text, "%.4f", between(low * 16, high * 16) / 16.0);
    return text;
  }

 private:
  std::mt19937_64 numbers_;
};

}  // namespace vellumtide::scenarios
