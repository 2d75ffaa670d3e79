#pragma once

#include <optional>
#include <string>

#include "aeapi/effect_data.h"

namespace vellumtide {

// The comment of the first marker of the effect's layer, in UTF-8. Nothing without a marker and
// when the host refuses any of it.
std::optional<std::string> firstMarkerComment(PF_InData* in_data);

}  // namespace vellumtide
