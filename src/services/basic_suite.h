#pragma once

#include "aeapi/effect_data.h"

namespace vellumtide {

// What suites are acquired from; null, which yields no suite, without in-data.
inline SPBasicSuite* basicSuiteOf(const PF_InData* in_data) {
  return in_data ? in_data->pica_basicP : nullptr;
}

}  // namespace vellumtide
