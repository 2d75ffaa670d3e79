// Lines of text in the host's Info panel.
#pragma once

#include "aeapi/effect_data.h"

namespace vellumtide {

// Each acquires the suite for the one call and returns the host's error. A null line stays empty.
PF_Err drawInfoText(PF_InData* in_data, const char* line1, const char* line2);
PF_Err drawInfoText3(PF_InData* in_data, const char* line1, const char* line2, const char* line3);

}  // namespace vellumtide
