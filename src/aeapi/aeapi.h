// The host's whole binary interface; layout_checks.cpp holds its layout at compile time.
#pragma once

#include "aeapi/constants.h"
#include "aeapi/effect_data.h"
#include "aeapi/entry_point.h"
#include "aeapi/geometry.h"
#include "aeapi/params.h"
#include "aeapi/scalars.h"
#include "aeapi/smart_render.h"
#include "aeapi/stream_values.h"
#include "aeapi/suites.h"
