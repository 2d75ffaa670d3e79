// What `vellumtide compare` says of two pictures, for people (text) and for programs (JSON).
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "cli/image/image_difference.h"

namespace vellumtide::cli {

struct Comparison {
  struct Side {
    std::string file;
    int width = 0, height = 0;
    SampleType sampleType = SampleType::UInt8;
  };
  Side a, b;
  std::optional<int> frame;  // of a sequence
  DifferenceOptions options;
  ImageDifference difference;  // meaningful when the sizes are the same
  bool passes = false;

  bool sameSize() const { return a.width == b.width && a.height == b.height; }
};

// Several lines, one fact each.
std::string comparisonText(const Comparison& comparison);

// The same in a line: "differ in 12 of 64 pixels, most (0.5) at 3,4 in green".
std::string comparisonLine(const Comparison& comparison);

// One object with its keys in a fixed order. Numbers that JSON cannot express are null.
nlohmann::ordered_json comparisonJson(const Comparison& comparison);

}  // namespace vellumtide::cli
