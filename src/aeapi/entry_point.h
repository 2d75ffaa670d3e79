// The one function a module exports.
#pragma once

#include "aeapi/effect_data.h"

#ifdef _WIN32
#define VELLUMTIDE_EXPORT __declspec(dllexport)
#else
#define VELLUMTIDE_EXPORT __attribute__((visibility("default")))
#endif

namespace vellumtide {

// The name under which a module exports its EntryPoint.
constexpr const char* kEntryPointName = "EntryPointFunc";

using EntryPoint = PF_Err(PF_Cmd command, PF_InData* in_data, PF_OutData* out_data,
                          PF_ParamDef* params[], PF_LayerDef* output, void* extra);

}  // namespace vellumtide
