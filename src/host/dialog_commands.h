#pragma once

#include "aeapi/effect_data.h"

namespace vellumtide {

// The answer to PF_Cmd_ABOUT.
PF_Err aboutCommand(PF_InData* in_data);

// The answer to PF_Cmd_DO_DIALOG, which the options button sends.
PF_Err informationCommand(PF_InData* in_data);

}  // namespace vellumtide
