// Whether a picture is what the second opinion drew.
#pragma once

#include <string>

#include "headless/world.h"

namespace vellumtide::scenarios {

// "" when they agree, else the first pixel that differs and how many do. `depth` counts the kernels
// on the way to the picture. With infinities among the pixels a filter spreads them by weights of
// nothing: then only what `unfiltered` shows as well is held against the picture.
std::string differenceOf(const headless::World& got, const headless::World& expected,
                         const headless::World* unfiltered, int depth);

// Some channel is infinite or not a number.
bool hasSpecials(const headless::World& world);

}  // namespace vellumtide::scenarios
