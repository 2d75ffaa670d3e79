// A whole scenario from a seed: programs, layers, instances and what happens to them.
#pragma once

#include <cstdint>

#include "tests/scenarios/scenario.h"

namespace vellumtide::scenarios {

Scenario writeScenario(std::uint64_t seed);

}  // namespace vellumtide::scenarios
