// Pixel buffers (worlds) and the definitions of effect controls.
#pragma once

#include "aeapi/geometry.h"

namespace vellumtide {

struct PF_LayerDef {
  void* reserved0;
  void* reserved1;
  PF_WorldFlags world_flags;
  PF_PixelPtr data;
  A_long rowbytes;
  A_long width;
  A_long height;
  PF_UnionableRect extent_hint;
  void* platform_ref;
  A_long reserved_long1;
  void* reserved_long4;
  PF_RationalScale pix_aspect_ratio;
  void* reserved_long2;
  A_long origin_x;
  A_long origin_y;
  A_long reserved_long3;
  A_long dephault;
};

using PF_EffectWorld = PF_LayerDef;

struct PF_SliderDef {
  PF_ParamValue value;
  A_char value_str[32];
  A_char value_desc[32];
  PF_ParamValue valid_min;
  PF_ParamValue valid_max;
  PF_ParamValue slider_min;
  PF_ParamValue slider_max;
  PF_ParamValue dephault;
};

struct PF_FixedSliderDef {
  PF_Fixed value;
  A_char value_str[32];
  A_char value_desc[32];
  PF_Fixed valid_min;
  PF_Fixed valid_max;
  PF_Fixed slider_min;
  PF_Fixed slider_max;
  PF_Fixed dephault;
  PF_Precision precision;
  PF_ValueDisplayFlags display_flags;
};

struct PF_AngleDef {
  PF_Fixed value;
  PF_Fixed dephault;
  PF_Fixed valid_min;
  PF_Fixed valid_max;
};

struct PF_CheckBoxDef {
  PF_ParamValue value;
  PF_Boolean dephault;
  A_char reserved;
  A_short reserved1;
  union {
    const A_char* nameptr;
  } u;
};

struct PF_ColorDef {
  PF_UnionablePixel value;
  PF_UnionablePixel dephault;
};

struct PF_PointDef {
  PF_Fixed x_value;
  PF_Fixed y_value;
  A_char reserved[3];
  PF_Boolean restrict_bounds;
  PF_Fixed x_dephault;
  PF_Fixed y_dephault;
};

struct PF_PopupDef {
  PF_ParamValue value;
  A_short num_choices;
  A_short dephault;
  union {
    const A_char* namesptr;
  } u;
};

struct PF_FloatSliderDef {
  PF_FpLong value;
  PF_FpLong phase;
  A_char value_desc[32];
  PF_FpShort valid_min;
  PF_FpShort valid_max;
  PF_FpShort slider_min;
  PF_FpShort slider_max;
  PF_FpShort dephault;
  PF_Precision precision;
  PF_ValueDisplayFlags display_flags;
  PF_FSliderFlags fs_flags;
  PF_FpShort curve_tolerance;
  PF_Boolean useExponent;
  PF_FpShort exponent;
};

// The host's further members (arbitrary data, paths, buttons, 3D points) are not larger than a
// layer.
union PF_ParamDefUnion {
  PF_LayerDef ld;
  PF_SliderDef sd;
  PF_FixedSliderDef fd;
  PF_AngleDef ad;
  PF_CheckBoxDef bd;
  PF_ColorDef cd;
  PF_PointDef td;
  PF_PopupDef pd;
  PF_FloatSliderDef fs_d;
};

struct PF_ParamDef {
  union {
    A_long id;
    PF_ChangeFlags change_flags;
  } uu;
  PF_ParamUIFlags ui_flags;
  A_short ui_width;
  A_short ui_height;
  PF_ParamType param_type;
  A_char name[32];
  PF_ParamFlags flags;
  A_long unused;
  PF_ParamDefUnion u;
};

}  // namespace vellumtide
