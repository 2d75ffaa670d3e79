// Pixels of a layer from a seed.
#pragma once

#include <string>

#include "headless/world.h"
#include "tests/scenarios/dice.h"

namespace vellumtide::scenarios {

// `kind`: "bytes" and "words" of random steps; "floats" from -1 to 2; "specials" the same with
// infinities, NaN, zeros of both signs and very large and small numbers among them.
headless::World drawnWorld(int width, int height, const std::string& kind, int seed,
                           headless::WorldLayout layout);

}  // namespace vellumtide::scenarios
