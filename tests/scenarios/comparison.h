// Whether a picture is what the second opinion drew.
#pragma once

#include <string>

#include "headless/world.h"

namespace vellumtide::scenarios {

// "" when they agree, else the first pixel that differs and how many do. `depth` counts the kernels
// on the way to the picture. `unfiltered` may stand for a pixel that is not a finite number.
std::string differenceOf(const headless::World& got, const headless::World& expected,
                         const headless::World* unfiltered, int depth);

// Some channel is infinite or not a number.
bool hasSpecials(const headless::World& world);

}  // namespace vellumtide::scenarios
