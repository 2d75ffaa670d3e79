// Scalars, handles and opaque references of the host's binary interface. Sizes are those of 64-bit
// Windows on every platform: A_long is 32 bits on Linux too.
#pragma once

#include <cstdint>

namespace vellumtide {

using A_long = int32_t;
using A_u_long = uint32_t;
using A_short = int16_t;
using A_u_short = uint16_t;
using A_char = char;
using A_u_char = uint8_t;
using A_Boolean = uint8_t;
using A_FpLong = double;
using A_UTF16Char = uint16_t;
using A_Err = int32_t;
using A_AppID = int32_t;
using SPErr = int32_t;
using SPBoolean = int32_t;

using PF_Err = int32_t;
using PF_Cmd = int32_t;
using PF_Boolean = char;
using PF_ParamIndex = int32_t;
using PF_ParamType = int32_t;
using PF_ParamFlags = int32_t;
using PF_ParamUIFlags = int32_t;
using PF_ParamValue = int32_t;
using PF_ChangeFlags = int32_t;
using PF_Field = int32_t;
using PF_ChannelMask = int32_t;
using PF_Quality = int32_t;
using PF_InFlags = int32_t;
using PF_OutFlags = int32_t;
using PF_OutFlags2 = int32_t;
using PF_WorldFlags = int32_t;
using PF_PixelFormat = int32_t;
using PF_GPU_Framework = int32_t;
using PF_PlatDataID = int32_t;
using PF_RenderOutputFlags = int16_t;
using PF_Precision = int16_t;
using PF_ValueDisplayFlags = int16_t;
using PF_FSliderFlags = uint32_t;
using PF_Fixed = int32_t;  // 16.16
using PF_UFixed = uint32_t;
using PF_FpShort = float;
using PF_FpLong = double;

using AEGP_PluginID = int32_t;
using AEGP_LayerStream = int32_t;
using AEGP_MarkerStringType = int32_t;
using AEGP_LayerIDVal = int32_t;
using AEGP_StreamType = int32_t;
using AEGP_KeyframeIndex = int32_t;
using AEGP_DynStreamFlags = uint32_t;
using AEGP_MemSize = uint32_t;
using AEGP_MemFlag = int32_t;
using AEGP_LTimeMode = int16_t;

// A handle points at a pointer to its block, so that the host may move the block while unlocked.
using PF_Handle = void**;
using AEGP_MemHandle = void**;

struct PF_ProgRef;
struct AEGP_Layer;
struct AEGP_Item;
struct AEGP_Comp;
struct AEGP_EffectRef;
struct AEGP_StreamRef;
struct AEGP_PersistentBlob;
struct AEGP_MarkerVal;
struct AEGP_Global;

using PF_ProgPtr = PF_ProgRef*;
using AEGP_LayerH = AEGP_Layer*;
using AEGP_ItemH = AEGP_Item*;
using AEGP_CompH = AEGP_Comp*;
using AEGP_EffectRefH = AEGP_EffectRef*;
using AEGP_StreamRefH = AEGP_StreamRef*;
using AEGP_PersistentBlobH = AEGP_PersistentBlob*;
using AEGP_MarkerValP = AEGP_MarkerVal*;
using AEGP_ConstMarkerValP = const AEGP_MarkerVal*;
using AEGP_GlobalRefcon = AEGP_Global*;

// 16 bytes, never read here.
struct alignas(8) PF_SoundFormatInfo {
  char bytes[16];
};

}  // namespace vellumtide
