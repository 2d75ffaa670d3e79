#pragma once

#include "aeapi/effect_data.h"

namespace vellumtide {

class pbGraph;

// Makes the panel of an instance mirror its program: shows, labels and ranges the controls that the
// program is bound to, hides all others and titles the instance. A null program hides everything.
// `controls` are the host's current definitions. Returns the host's first error.
PF_Err updatePanel(PF_InData* in_data, PF_ParamDef* controls[], const pbGraph* program);

// Gives every bound control its parameter's default, where the program names one.
PF_Err adoptDefaults(PF_InData* in_data, const pbGraph& program);

}  // namespace vellumtide
