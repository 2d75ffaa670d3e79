// Values of streams (keyframable properties).
#pragma once

#include "aeapi/scalars.h"

namespace vellumtide {

struct AEGP_FourDVal {
  A_FpLong x;
  A_FpLong y;
  A_FpLong z;
  A_FpLong w;
};

struct AEGP_ThreeDVal {
  A_FpLong x;
  A_FpLong y;
  A_FpLong z;
};

using AEGP_OneDVal = A_FpLong;
using AEGP_ArbBlockVal = void**;
using AEGP_MaskIDVal = int32_t;
using AEGP_MaskOutlineValH = void*;
using AEGP_TextDocumentH = void*;

struct AEGP_ColorVal {
  A_FpLong alphaF;
  A_FpLong redF;
  A_FpLong greenF;
  A_FpLong blueF;
};

struct AEGP_TwoDVal {
  A_FpLong x;
  A_FpLong y;
};

union AEGP_StreamVal2 {
  AEGP_FourDVal four_d;
  AEGP_ThreeDVal three_d;
  AEGP_TwoDVal two_d;
  AEGP_OneDVal one_d;
  AEGP_ColorVal color;
  AEGP_ArbBlockVal arbH;
  AEGP_MarkerValP markerP;
  AEGP_LayerIDVal layer_id;
  AEGP_MaskIDVal mask_id;
  AEGP_MaskOutlineValH mask;
  AEGP_TextDocumentH text_documentH;
};

struct AEGP_StreamValue2 {
  AEGP_StreamRefH streamH;
  AEGP_StreamVal2 val;
};

}  // namespace vellumtide
