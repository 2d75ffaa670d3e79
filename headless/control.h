// One control of an effect instance: how it was declared, what the panel shows of it, its value.
#pragma once

#include <string>
#include <vector>

#include "aeapi/aeapi.h"

namespace vellumtide::headless {

struct PointValue {
  double x = 0, y = 0;  // full-resolution layer pixels
};

struct ColorValue {
  double red = 0, green = 0, blue = 0, alpha = 1;  // 0 to 1
};

struct Control {
  PF_ParamIndex index = 0;
  PF_ParamType type = PF_Param_LAYER;
  PF_ParamDef declared{};   // as given to add_param
  std::string choicesText;  // pop-ups: entries split at "|"; check boxes: the text beside the box

  // What the panel shows; changed by PF_UpdateParamUI and through the control's stream.
  std::string label;
  bool hidden = false;
  bool enabled = true;
  bool collapsed = false;
  double validMin = 0, validMax = 0;    // sliders only
  double sliderMin = 0, sliderMax = 0;  // sliders only
  int updates = 0;                      // accepted PF_UpdateParamUI calls

  // The value; which of these counts depends on `type`.
  double number = 0;            // slider, fixed slider, angle in degrees, check box, pop-up from 1
  PointValue point;             // point
  ColorValue color;             // colour
  AEGP_LayerIDVal layerId = 0;  // layer, 0 for none
  int valueSets = 0;            // how often the module set it through its stream

  // Entries of a pop-up in order.
  std::vector<std::string> choices() const;
  bool isNumber() const;
  // The number held to the control's valid range (a check box to 0 or 1).
  double clamped(double value) const;
};

// A control at its declared default; a point's default is a percentage of the layer's size.
Control makeControl(const PF_ParamDef& declared, PF_ParamIndex index, int layerWidth,
                    int layerHeight);
// Takes from a PF_UpdateParamUI record what the panel shows; the value is left alone.
void applyUiUpdate(Control& control, const PF_ParamDef& update);
// The record that checkout_param fills, points in downsampled pixels; a layer's pixels and the
// texts of pop-ups and check boxes are those of the declaration.
PF_ParamDef paramDefOf(const Control& control, PF_RationalScale downsampleX,
                       PF_RationalScale downsampleY);

}  // namespace vellumtide::headless
