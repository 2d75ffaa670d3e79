// Width to height of the pixels of a layer's source item; 1.0 for no layer and when unreadable.
#pragma once

#include "aeapi/effect_data.h"

namespace vellumtide {

float layerPixelAspect(PF_InData* in_data, AEGP_LayerH layer);

// Of the layer that a layer control refers to at the current time.
float layerParameterAspect(PF_InData* in_data, PF_ParamIndex index);

}  // namespace vellumtide
