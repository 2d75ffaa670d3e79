#include "cli/text/number_text.h"

#include <charconv>
#include <cmath>

namespace vellumtide::cli {
namespace {

constexpr double kLargestTerm = 1e9;
constexpr A_long kLargestDenominator = 10000;

}  // namespace

std::optional<double> parseNumber(std::string_view text) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size() || !std::isfinite(value)) return {};
  return value;
}

std::optional<std::vector<double>> parseNumbers(std::string_view text) {
  std::vector<double> numbers;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t comma = std::min(text.find(',', start), text.size());
    const std::optional<double> number = parseNumber(text.substr(start, comma - start));
    if (!number) return {};
    numbers.push_back(*number);
    start = comma + 1;
  }
  return numbers;
}

std::optional<PF_RationalScale> parseRatio(std::string_view text) {
  const std::size_t bar = text.find_first_of("/:");
  if (bar == std::string_view::npos) {
    const std::optional<double> value = parseNumber(text);
    if (!value || *value < 1.0 / kLargestDenominator || *value > kLargestTerm) return {};
    return closestRatio(*value);
  }
  const std::optional<double> num = parseNumber(text.substr(0, bar));
  const std::optional<double> den = parseNumber(text.substr(bar + 1));
  for (const std::optional<double>& term : {num, den}) {
    if (!term || *term < 1 || *term > kLargestTerm || *term != std::floor(*term)) return {};
  }
  return PF_RationalScale{static_cast<A_long>(*num), static_cast<A_u_long>(*den)};
}

PF_RationalScale closestRatio(double value) {
  // The convergents of the continued fraction, as long as the denominator stays small.
  double rest = value;
  double num = 1, den = 0, lastNum = 0, lastDen = 1;
  while (true) {
    const double whole = std::floor(rest);
    const double nextNum = whole * num + lastNum;
    const double nextDen = whole * den + lastDen;
    if (nextDen > kLargestDenominator || nextNum > kLargestTerm) break;
    lastNum = num, lastDen = den;
    num = nextNum, den = nextDen;
    if (rest - whole < 1e-9) break;
    rest = 1 / (rest - whole);
  }
  return {static_cast<A_long>(num), static_cast<A_u_long>(den)};
}

std::string numberText(float value) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

}  // namespace vellumtide::cli
