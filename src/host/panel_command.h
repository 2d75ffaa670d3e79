#pragma once

#include "aeapi/effect_data.h"

namespace vellumtide {

// The answer to PF_Cmd_UPDATE_PARAMS_UI: the panel mirrors the instance's program, and an instance
// whose controls have not taken a program's defaults yet takes them now.
PF_Err updateParamsUi(PF_InData* in_data, PF_ParamDef* controls[]);

}  // namespace vellumtide
