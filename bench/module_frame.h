// The module in a headless host that keeps its own checks out of the way, and medians of timings
// taken in pairs.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "headless/host.h"
#include "tests/support/scratch_folder.h"

namespace vellumtide::bench {

class ModuleSession {
 public:
  ModuleSession();
  ~ModuleSession();

  // Loads the program into a new instance; throws std::runtime_error when it is not usable.
  // `seconds` receives the time inside the entry point.
  headless::Effect& load(const std::string& fileName, const std::string& text,
                         const headless::World& picture, double* seconds = nullptr);
  // Seconds inside the entry point for one frame drawn into `output`.
  double frame(headless::Effect& effect, headless::World& output);

  headless::Host host;

 private:
  testing::ScratchFolder folder_;
  headless::Composition& comp_;
};

// A picture whose values differ from pixel to pixel.
headless::World benchPicture(int width, int height, PF_PixelFormat format);

template <class Number>
Number median(std::vector<Number> numbers) {
  std::nth_element(numbers.begin(), numbers.begin() + numbers.size() / 2, numbers.end());
  return numbers[numbers.size() / 2];
}

// The median of the ratios of times taken in turn, so that a slow moment of the machine counts on
// both sides.
inline double medianRatio(const std::vector<double>& times, const std::vector<double>& others) {
  std::vector<double> ratios;
  for (std::size_t i = 0; i < times.size(); ++i)
    ratios.push_back(times[i] / others[i]);
  return median(ratios);
}

}  // namespace vellumtide::bench
