// Small shared records: rectangles, ratios, times, pixels.
#pragma once

#include "aeapi/scalars.h"

namespace vellumtide {

struct PF_Pixel {
  A_u_char alpha;
  A_u_char red;
  A_u_char green;
  A_u_char blue;
};

using PF_UnionablePixel = PF_Pixel;
using PF_PixelPtr = PF_Pixel*;

struct PF_Pixel16 {
  A_u_short alpha;
  A_u_short red;
  A_u_short green;
  A_u_short blue;
};

struct PF_PixelFloat {
  PF_FpShort alpha;
  PF_FpShort red;
  PF_FpShort green;
  PF_FpShort blue;
};

struct PF_RationalScale {
  A_long num;
  A_u_long den;
};

struct PF_LRect {
  A_long left;
  A_long top;
  A_long right;
  A_long bottom;
};

using PF_Rect = PF_LRect;
using PF_UnionableRect = PF_LRect;

struct PF_Point {
  A_long h;
  A_long v;
};

struct PF_SpecVersion {
  A_short major;
  A_short minor;
};

struct A_Time {
  A_long value;
  A_u_long scale;
};

struct A_Ratio {
  A_long num;
  A_u_long den;
};

}  // namespace vellumtide
