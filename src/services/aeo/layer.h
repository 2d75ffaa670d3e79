// What is read of layers: their source's pixel aspect ratio and their first marker.
#pragma once

#include <string>

#include "aeapi/effect_data.h"

namespace vellumtide::AEO {

// The layer the effect is applied to; null when the host does not say.
AEGP_LayerH effectLayer(PF_InData* in_data);

// The layer that a layer control refers to at the current time; null for none and when unreadable.
AEGP_LayerH layerOfControl(PF_InData* in_data, PF_ParamIndex index);

// Width to height of a pixel of the layer's source item; 1.0 when unreadable.
double layerPixelAspect(PF_InData* in_data, AEGP_LayerH layer);
double layerControlPixelAspect(PF_InData* in_data, PF_ParamIndex index);

// The comment of the first marker of the effect's layer, in UTF-8. Empty without a marker and when
// the host refuses any of it.
std::string firstMarkerComment(PF_InData* in_data);

}  // namespace vellumtide::AEO
