#pragma once

#include "aeapi/effect_data.h"

namespace vellumtide {

class pbGraph;

// The answer to PF_Cmd_UPDATE_PARAMS_UI: the panel mirrors the instance's program, and an instance
// whose controls have not taken a program's defaults yet takes them now. Returns the host's first
// error.
PF_Err updateParamsUi(PF_InData* in_data, PF_ParamDef* controls[]);

// Gives the instance's controls the program's defaults when it is fresh, which it is no longer
// then: a control that refuses its default must not bring all of them again at every update.
PF_Err adoptDefaultsOnce(PF_InData* in_data, const pbGraph& program);

}  // namespace vellumtide
