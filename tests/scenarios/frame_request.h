// What a frame of an instance consists of, told from the host's own records: which pixels feed
// which image, how large everything is, what the controls say, which part is asked for.
#pragma once

#include <optional>

#include "headless/host.h"
#include "tests/scenarios/second_opinion.h"

namespace vellumtide::scenarios {

// The part of the layer's pixels that the module is handed, and the part that it then gives; empty
// rectangles where there is none.
struct FramePlaces {
  PF_LRect input{}, output{};
};
FramePlaces placesOf(headless::Effect& effect, const headless::RenderOptions& options);

FrameRequest requestOf(headless::Effect& effect, const headless::RenderOptions& options,
                       const Plan& plan);

// Whether some number that goes into the frame is infinite or not a number.
bool hasSpecials(headless::Effect& effect, const headless::RenderOptions& options,
                 const FrameRequest& request);

}  // namespace vellumtide::scenarios
