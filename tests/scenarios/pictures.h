// Pixels of a layer from a seed, and whether a picture is what the second opinion drew.
#pragma once

#include <string>

#include "headless/world.h"
#include "tests/scenarios/dice.h"

namespace vellumtide::scenarios {

// `kind`: "bytes" and "words" of random steps; "floats" from -1 to 2; "specials" the same with
// infinities, NaN, zeros of both signs and very large and small numbers among them.
headless::World drawnWorld(int width, int height, const std::string& kind, int seed,
                           headless::WorldLayout layout);

// "" when they agree, else the first pixel that differs and how many do. `depth` counts the kernels
// on the way to the picture. With infinities among the pixels a filter spreads them by weights of
// nothing: then only what `unfiltered` shows as well is held against the picture.
std::string differenceOf(const headless::World& got, const headless::World& expected,
                         const headless::World* unfiltered, int depth);

// Some channel is infinite or not a number.
bool hasSpecials(const headless::World& world);

}  // namespace vellumtide::scenarios
