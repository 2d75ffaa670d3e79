#pragma once

#include "aeapi/effect_data.h"

namespace vellumtide::AEO {

// The layer the effect is applied to; null when the host does not say.
AEGP_LayerH effectLayer(PF_InData* in_data);

}  // namespace vellumtide::AEO
