// Numbers of the host's binary interface: commands, errors, control types, flags.
#pragma once

#include "aeapi/scalars.h"

namespace vellumtide {

enum : PF_Cmd {
  PF_Cmd_ABOUT = 0,
  PF_Cmd_GLOBAL_SETUP = 1,
  PF_Cmd_GLOBAL_SETDOWN = 3,
  PF_Cmd_PARAMS_SETUP = 4,
  PF_Cmd_SEQUENCE_SETUP = 5,
  PF_Cmd_SEQUENCE_RESETUP = 6,
  PF_Cmd_SEQUENCE_FLATTEN = 7,
  PF_Cmd_SEQUENCE_SETDOWN = 8,
  PF_Cmd_DO_DIALOG = 9,
  PF_Cmd_FRAME_SETUP = 10,
  PF_Cmd_RENDER = 11,
  PF_Cmd_FRAME_SETDOWN = 12,
  PF_Cmd_USER_CHANGED_PARAM = 13,
  PF_Cmd_UPDATE_PARAMS_UI = 14,
  PF_Cmd_SMART_PRE_RENDER = 23,
  PF_Cmd_SMART_RENDER = 24,
  PF_Cmd_NUM_CMDS = 27,
  PF_Cmd_GET_FLATTENED_SEQUENCE_DATA = 28,
  PF_Cmd_SMART_RENDER_GPU = 31,
};

enum : PF_Err {
  PF_Err_NONE = 0,
  PF_Err_OUT_OF_MEMORY = 4,
  PF_Err_INTERNAL_STRUCT_DAMAGED = 512,
  PF_Err_INVALID_INDEX = 513,
  PF_Err_UNRECOGNIZED_PARAM_TYPE = 514,
  PF_Err_INVALID_CALLBACK = 515,
  PF_Err_BAD_CALLBACK_PARAM = 516,
  PF_Interrupt_CANCEL = 517,
};

enum : PF_OutFlags {
  PF_OutFlag_KEEP_RESOURCE_OPEN = 1 << 0,
  PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING = 1 << 4,
  PF_OutFlag_I_DO_DIALOG = 1 << 5,
  PF_OutFlag_DEEP_COLOR_AWARE = 1 << 25,
  PF_OutFlag_SEND_UPDATE_PARAMS_UI = 1 << 26,
};

enum : PF_OutFlags2 {
  PF_OutFlag2_SUPPORTS_SMART_RENDER = 1 << 10,
  PF_OutFlag2_FLOAT_COLOR_AWARE = 1 << 12,
};

enum : PF_ParamType {
  PF_Param_LAYER = 0,
  PF_Param_SLIDER = 1,
  PF_Param_FIX_SLIDER = 2,
  PF_Param_ANGLE = 3,
  PF_Param_CHECKBOX = 4,
  PF_Param_COLOR = 5,
  PF_Param_POINT = 6,
  PF_Param_POPUP = 7,
  PF_Param_FLOAT_SLIDER = 10,
};

enum : PF_ParamFlags {
  PF_ParamFlag_CANNOT_TIME_VARY = 2,
  PF_ParamFlag_CANNOT_INTERP = 4,
  PF_ParamFlag_START_COLLAPSED = 32,
  PF_ParamFlag_SUPERVISE = 64,
  PF_ParamFlag_USE_VALUE_FOR_OLD_PROJECTS = 128,
};

enum : PF_ParamUIFlags {
  PF_PUI_TOPIC = 1,
  PF_PUI_CONTROL = 2,
  PF_PUI_STD_CONTROL_ONLY = 4,
  PF_PUI_NO_ECW_UI = 8,
  PF_PUI_DISABLED = 32,
  PF_PUI_INVISIBLE = 512,
};

enum : A_long { PF_LayerDefault_MYSELF = -1, PF_LayerDefault_NONE = 0 };
enum : PF_ChangeFlags { PF_ChangeFlag_CHANGED_VALUE = 1 };

// Four-character codes, first character in the lowest byte: "argb", "ae16", "ae32".
enum : PF_PixelFormat {
  PF_PixelFormat_ARGB32 = 0x62677261,
  PF_PixelFormat_ARGB64 = 0x36316561,
  PF_PixelFormat_ARGB128 = 0x32336561,
};

enum : PF_WorldFlags { PF_WorldFlag_DEEP = 1, PF_WorldFlag_WRITEABLE = 2 };
enum : PF_Field { PF_Field_FRAME = 0, PF_Field_UPPER = 1, PF_Field_LOWER = 2 };
enum : PF_ChannelMask {
  PF_ChannelMask_ALPHA = 1,
  PF_ChannelMask_RED = 2,
  PF_ChannelMask_GREEN = 4,
  PF_ChannelMask_BLUE = 8,
  PF_ChannelMask_ARGB = 15,
};
enum : PF_Quality { PF_Quality_LO = 0, PF_Quality_HI = 1 };
enum : PF_RenderOutputFlags { PF_RenderOutputFlag_RETURNS_EXTRA_PIXELS = 1 };

enum : AEGP_LayerStream { AEGP_LayerStream_MARKER = 6 };
enum : AEGP_MarkerStringType { AEGP_MarkerString_COMMENT = 1 };
enum : AEGP_LTimeMode { AEGP_LTimeMode_LayerTime = 0, AEGP_LTimeMode_CompTime = 1 };
enum : AEGP_DynStreamFlags {
  AEGP_DynStreamFlag_ACTIVE_EYEBALL = 1,
  AEGP_DynStreamFlag_HIDDEN = 2,
  AEGP_DynStreamFlag_DISABLED = 16,
};
enum : AEGP_MemFlag { AEGP_MemFlag_NONE = 0, AEGP_MemFlag_CLEAR = 1 };

enum : AEGP_StreamType {
  AEGP_StreamType_NO_DATA = 0,
  AEGP_StreamType_ThreeD_SPATIAL = 1,
  AEGP_StreamType_ThreeD = 2,
  AEGP_StreamType_TwoD_SPATIAL = 3,
  AEGP_StreamType_TwoD = 4,
  AEGP_StreamType_OneD = 5,
  AEGP_StreamType_COLOR = 6,
  AEGP_StreamType_ARB = 7,
  AEGP_StreamType_MARKER = 8,
  AEGP_StreamType_LAYER_ID = 9,
  AEGP_StreamType_MASK_ID = 10,
  AEGP_StreamType_MASK = 11,
  AEGP_StreamType_TEXT_DOCUMENT = 12,
};

// Longest texts, terminator not counted.
constexpr int kMaxParamNameLength = 31;
constexpr int kMaxReturnMessageLength = 255;

}  // namespace vellumtide
