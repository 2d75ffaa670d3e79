#pragma once

#include <string_view>
#include <unordered_set>

#include "glsl/body_words.h"

namespace vellumtide {

/// Whether the words at `i` call `outCoord()`.
bool isOutCoordCall(const BodyWords& words, std::size_t i);

/// The variables that hold `outCoord()` wherever they are read: declared once in the whole body, as
/// `float2 name = outCoord();`, and standing nowhere else but in expressions that cannot change
/// them. None where a macro or a parameter that is written could change one without showing it.
/// `ownFunctions` are the functions that the body defines.
std::unordered_set<std::string_view> positionVariables(
    const BodyWords& words, const std::unordered_set<std::string_view>& ownFunctions);

}  // namespace vellumtide
