// Scenarios played in child processes, so that a crash, a hang or a flood of memory is a finding
// like any other.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "tests/scenarios/scenario.h"
#include "tests/scenarios/stage.h"

namespace vellumtide::scenarios {

struct Outcome {
  std::optional<Finding> finding;
  std::uint64_t step = 0;   // that it was found in, from 0
  std::uint64_t steps = 0;  // played
};

// One scenario in a process of its own.
Outcome playInChild(const Scenario& scenario);

// The scenarios of the seeds from `first` on, as long as `more` says so for the next one; each
// outcome is reported in order. Many share a process until one is found to fail.
void playSeeds(std::uint64_t first, const std::function<bool(std::uint64_t seed)>& more,
               const std::function<void(std::uint64_t seed, const Outcome&)>& report);

}  // namespace vellumtide::scenarios
