#include "kernel/number_text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

#include "kernel/characters.h"

namespace vellumtide {
namespace {

/// Whether a number that is out of range is so by being large: its first digit that counts stands
/// in front of the point once the exponent is applied.
bool isLarge(std::string_view text, bool isHex) {
  constexpr std::int64_t kFar = std::int64_t{1} << 40;
  const std::size_t exponentMark = text.find_first_of(isHex ? "pP" : "eE");
  const std::string_view mantissa = text.substr(0, exponentMark);
  std::int64_t exponent = 0;
  if (exponentMark != std::string_view::npos) {
    std::string_view digits = text.substr(exponentMark + 1);
    const bool isNegative = digits.starts_with('-');
    if (isNegative || digits.starts_with('+')) digits.remove_prefix(1);
    for (const char c : digits)
      exponent = std::min(exponent * 10 + (c - '0'), kFar);
    if (isNegative) exponent = -exponent;
  }
  const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissa.size()));
  const auto first = static_cast<std::int64_t>(mantissa.find_first_not_of("0."));
  return (point - first) * (isHex ? 4 : 1) + exponent > 0;
}

}  // namespace

std::int32_t decimalInt(std::string_view token, bool isPositive) {
  const std::int64_t limit = std::int64_t{std::numeric_limits<std::int32_t>::max()} + !isPositive;
  std::int64_t value = 0;
  for (const char c : token) {
    if (!isDigit(c)) break;
    value = std::min(value * 10 + (c - '0'), limit);
  }
  return static_cast<std::int32_t>(isPositive ? value : -value);
}

double decimalNumber(std::string_view token) {
  std::size_t length = 0;
  bool hasPoint = false;
  while (length < token.size() && (isDigit(token[length]) || (token[length] == '.' && !hasPoint))) {
    hasPoint = hasPoint || token[length] == '.';
    ++length;
  }
  return exactNumber<double>(token.substr(0, length));
}

template <typename T>
T exactNumber(std::string_view text, bool isHex) {
  T value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value,
                                      isHex ? std::chars_format::hex : std::chars_format::general);
  if (result.ec == std::errc::result_out_of_range) {
    return isLarge(text, isHex) ? std::numeric_limits<T>::infinity() : T{0};
  }
  return value;
}

template float exactNumber<float>(std::string_view, bool);
template double exactNumber<double>(std::string_view, bool);

}  // namespace vellumtide
