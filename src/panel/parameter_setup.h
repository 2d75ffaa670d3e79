#pragma once

#include "aeapi/effect_data.h"

namespace vellumtide {

// Declares the control bank and names the options button: the answer to PF_Cmd_PARAMS_SETUP. Stops
// at, and returns, the first error of the host.
PF_Err setupParameters(PF_InData* in_data, PF_OutData* out_data);

}  // namespace vellumtide
