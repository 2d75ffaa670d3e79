#include "headless/control.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "headless/text.h"

namespace vellumtide::headless {
namespace {

constexpr double kFixedOne = 65536.0;

double fromFixed(PF_Fixed fixed) {
  return fixed / kFixedOne;
}

PF_Fixed toFixed(double value) {
  const double scaled = std::round(value * kFixedOne);
  constexpr double kLowest = std::numeric_limits<PF_Fixed>::min();
  constexpr double kHighest = std::numeric_limits<PF_Fixed>::max();
  return static_cast<PF_Fixed>(std::clamp(scaled, kLowest, kHighest));
}

double ratio(PF_RationalScale scale) {
  return static_cast<double>(scale.num) / scale.den;
}

A_u_char toByte(double value) {
  return static_cast<A_u_char>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

template <typename Def>
void takeRanges(Control& control, const Def& def, double scale) {
  control.validMin = def.valid_min / scale;
  control.validMax = def.valid_max / scale;
  control.sliderMin = def.slider_min / scale;
  control.sliderMax = def.slider_max / scale;
}

void takeDefault(Control& control, const PF_ParamDefUnion& u, int layerWidth, int layerHeight) {
  switch (control.type) {
    case PF_Param_SLIDER:
      takeRanges(control, u.sd, 1);
      control.number = u.sd.dephault;
      break;
    case PF_Param_FIX_SLIDER:
      takeRanges(control, u.fd, kFixedOne);
      control.number = fromFixed(u.fd.dephault);
      break;
    case PF_Param_FLOAT_SLIDER:
      takeRanges(control, u.fs_d, 1);
      control.number = u.fs_d.dephault;
      break;
    case PF_Param_ANGLE:
      control.number = fromFixed(u.ad.dephault);
      break;
    case PF_Param_CHECKBOX:
      control.number = u.bd.dephault != 0;
      if (u.bd.u.nameptr) control.choicesText = u.bd.u.nameptr;
      break;
    case PF_Param_POPUP:
      control.number = u.pd.dephault;
      if (u.pd.u.namesptr) control.choicesText = u.pd.u.namesptr;
      break;
    case PF_Param_COLOR: {
      const PF_Pixel& pixel = u.cd.dephault;
      control.color = {pixel.red / 255.0, pixel.green / 255.0, pixel.blue / 255.0,
                       pixel.alpha / 255.0};
      break;
    }
    case PF_Param_POINT:
      control.point = {fromFixed(u.td.x_dephault) / 100 * layerWidth,
                       fromFixed(u.td.y_dephault) / 100 * layerHeight};
      break;
    default:
      break;
  }
}

}  // namespace

std::vector<std::string> Control::choices() const {
  std::vector<std::string> entries;
  if (type != PF_Param_POPUP) return entries;
  size_t start = 0;
  for (size_t bar; (bar = choicesText.find('|', start)) != std::string::npos; start = bar + 1) {
    entries.push_back(choicesText.substr(start, bar - start));
  }
  entries.push_back(choicesText.substr(start));
  return entries;
}

bool Control::isNumber() const {
  return type != PF_Param_LAYER && type != PF_Param_COLOR && type != PF_Param_POINT;
}

double Control::clamped(double value) const {
  switch (type) {
    case PF_Param_SLIDER:
      return std::round(std::clamp(value, validMin, validMax));
    case PF_Param_FIX_SLIDER:
    case PF_Param_FLOAT_SLIDER:
      return std::clamp(value, validMin, validMax);
    case PF_Param_CHECKBOX:
      return value != 0;
    case PF_Param_POPUP:
      return std::round(std::clamp<double>(value, 1, std::max<int>(1, declared.u.pd.num_choices)));
    default:
      return value;
  }
}

Control makeControl(const PF_ParamDef& declared, PF_ParamIndex index, int layerWidth,
                    int layerHeight) {
  Control control;
  control.index = index;
  control.type = declared.param_type;
  control.declared = declared;
  control.label = fieldText(declared.name);
  control.enabled = (declared.ui_flags & PF_PUI_DISABLED) == 0;
  control.collapsed = (declared.flags & PF_ParamFlag_START_COLLAPSED) != 0;
  takeDefault(control, declared.u, layerWidth, layerHeight);
  return control;
}

void applyUiUpdate(Control& control, const PF_ParamDef& update) {
  ++control.updates;
  control.label = fieldText(update.name);
  control.enabled = (update.ui_flags & PF_PUI_DISABLED) == 0;
  control.collapsed = (update.flags & PF_ParamFlag_START_COLLAPSED) != 0;
  // Of a slider's ranges only what the user can drag is the panel's; what is valid stays.
  Control shown;
  shown.type = control.type;
  takeDefault(shown, update.u, 0, 0);
  control.sliderMin = shown.sliderMin;
  control.sliderMax = shown.sliderMax;
  if (!shown.choicesText.empty()) control.choicesText = shown.choicesText;
}

PF_ParamDef paramDefOf(const Control& control, PF_RationalScale downsampleX,
                       PF_RationalScale downsampleY) {
  PF_ParamDef def = control.declared;
  def.uu.change_flags = 0;
  setField(def.name, control.label);
  def.ui_flags = control.enabled ? def.ui_flags & ~PF_PUI_DISABLED : def.ui_flags | PF_PUI_DISABLED;
  switch (control.type) {
    case PF_Param_SLIDER:
      def.u.sd.value = static_cast<PF_ParamValue>(control.number);
      def.u.sd.slider_min = static_cast<PF_ParamValue>(control.sliderMin);
      def.u.sd.slider_max = static_cast<PF_ParamValue>(control.sliderMax);
      break;
    case PF_Param_FIX_SLIDER:
      def.u.fd.value = toFixed(control.number);
      def.u.fd.slider_min = toFixed(control.sliderMin);
      def.u.fd.slider_max = toFixed(control.sliderMax);
      break;
    case PF_Param_FLOAT_SLIDER:
      def.u.fs_d.value = control.number;
      break;
    case PF_Param_ANGLE:
      def.u.ad.value = toFixed(control.number);
      break;
    case PF_Param_CHECKBOX:
      def.u.bd.value = static_cast<PF_ParamValue>(control.number);
      break;
    case PF_Param_POPUP:
      def.u.pd.value = static_cast<PF_ParamValue>(control.number);
      break;
    case PF_Param_COLOR:
      def.u.cd.value = {toByte(control.color.alpha), toByte(control.color.red),
                        toByte(control.color.green), toByte(control.color.blue)};
      break;
    case PF_Param_POINT:
      def.u.td.x_value = toFixed(control.point.x * ratio(downsampleX));
      def.u.td.y_value = toFixed(control.point.y * ratio(downsampleY));
      break;
    default:
      break;
  }
  return def;
}

}  // namespace vellumtide::headless
