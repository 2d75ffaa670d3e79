// Makes a failing scenario small: steps, program files, their lines and words go as long as the
// same kind of finding remains.
#pragma once

#include <functional>

#include "tests/scenarios/scenario.h"

namespace vellumtide::scenarios {

Scenario shrink(Scenario scenario, const std::function<bool(const Scenario&)>& stillFails);

}  // namespace vellumtide::scenarios
