// The tables of functions that the host hands to a module. Internal to this folder.
#pragma once

#include "aeapi/aeapi.h"

namespace vellumtide::headless {

// In-data callbacks.
const PF_InteractCallbacks& interactCallbacks();
PF_UtilCallbacks& utilCallbacks();
PF_PreRenderCallbacks& preRenderCallbacks();
PF_SmartRenderCallbacks& smartRenderCallbacks();
SPBasicSuite& basicSuite();

// Suites.
const PF_AdvAppSuite1& advAppSuite();
const PF_EffectUISuite1& effectUiSuite();
const PF_ParamUtilsSuite1& paramUtilsSuite();
const PF_WorldSuite2& worldSuite();
const AEGP_UtilitySuite5& utilitySuite();
const AEGP_PersistentDataSuite3& persistentDataSuite();
const AEGP_MemorySuite1& memorySuite();
const AEGP_PFInterfaceSuite1& pfInterfaceSuite();
const AEGP_LayerSuite5& layerSuite();
const AEGP_StreamSuite3& streamSuite();
const AEGP_KeyframeSuite4& keyframeSuite();
const AEGP_MarkerSuite1& markerSuite();
const AEGP_ItemSuite6& itemSuite();
const AEGP_DynamicStreamSuite4& dynamicStreamSuite();
const AEGP_EffectSuite3& effectSuite();

// Checks the plug-in id that a call of `caller` passes: 0 or one that was handed out.
class CallFrame;
void checkPluginId(CallFrame& frame, AEGP_PluginID id, const char* caller);

}  // namespace vellumtide::headless
