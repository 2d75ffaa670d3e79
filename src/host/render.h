#pragma once

#include "aeapi/effect_data.h"
#include "aeapi/smart_render.h"

namespace vellumtide {

// Asks for the whole of the effect's layer: the answer to PF_Cmd_SMART_PRE_RENDER.
PF_Err smartPreRender(PF_InData* in_data, PF_OutData* out_data, PF_PreRenderExtra* extra);

// Draws one frame: the answer to PF_Cmd_SMART_RENDER. An instance without a usable program leaves
// the output as the host gave it. Throws or returns the host's errors.
PF_Err smartRender(PF_InData* in_data, PF_OutData* out_data, PF_SmartRenderExtra* extra);

}  // namespace vellumtide
