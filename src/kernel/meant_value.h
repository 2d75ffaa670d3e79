#pragma once

#include <optional>
#include <string_view>

#include "kernel/element_type.h"
#include "kernel/value.h"

namespace vellumtide {

/// The longest text that counts as a value somebody means.
inline constexpr std::size_t kMeantValueLimit = 4096;

/// A value of the type as the author of the text means it. Numbers have signs and exponents; + - *
/// / and parentheses of numbers are computed, componentwise for vectors; constructors stand in one
/// another. A single number fills all components, a matrix's diagonal; components that are left out
/// are 0, further ones are dropped. Nothing for anything else: other words, operators without
/// operands, a division by zero, what is not a number, a text beyond the limit, brackets or
/// constructors more than 32 deep.
std::optional<ValueCells> meantValue(std::string_view text, pbElementType type);

/// The value of a metadata entry: what the value rules have read from the text, and what is meant
/// by it where that differs.
pbValue valueOf(const ValueCells& cells, std::string_view text, pbElementType type);

}  // namespace vellumtide
