// Numbers and ratios as people type them, independent of the locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "aeapi/geometry.h"

namespace vellumtide::cli {

// The whole text as a finite number; nothing when it is not one.
std::optional<double> parseNumber(std::string_view text);

// "A,B,..." as numbers; nothing when one of them is not.
std::optional<std::vector<double>> parseNumbers(std::string_view text);

// "A/B", "A:B" with whole numbers, or one number, as a positive fraction.
std::optional<PF_RationalScale> parseRatio(std::string_view text);

// The fraction with a denominator of at most 10000 that is closest to a positive number.
PF_RationalScale closestRatio(double value);

// Shortest text that reads back as the same number.
std::string numberText(float value);

}  // namespace vellumtide::cli
