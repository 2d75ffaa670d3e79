#pragma once

#include <cstdint>
#include <string_view>

namespace vellumtide {

/// The leading decimal digits of `token` as a number, saturated to 32 bits once the sign is
/// applied; 0 when there are none.
std::int32_t decimalInt(std::string_view token, bool isPositive);

/// The leading decimal digits, with at most one point, as a number; 0 when there are none. Too
/// large gives infinity.
double decimalNumber(std::string_view token);

/// A text that from_chars accepts whole, too large giving infinity and too small zero.
/// Instantiated for float and double; `isHex` texts come without "0x".
template <typename T>
T exactNumber(std::string_view text, bool isHex = false);

}  // namespace vellumtide
