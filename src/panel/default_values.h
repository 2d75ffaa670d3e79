// The values that a program wants its controls to start with.
#pragma once

#include "aeapi/effect_data.h"

namespace vellumtide {

class pbGraph;

// Gives every bound control its parameter's default, where the program names one, brought into the
// control's range. A control that has the value already is left alone, and one that refuses it does
// not keep the others from theirs. `asked` tells whether it came to any control at all. Returns the
// host's first error.
PF_Err adoptDefaults(PF_InData* in_data, const pbGraph& program, bool& asked);

}  // namespace vellumtide
