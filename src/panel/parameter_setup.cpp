#include "panel/parameter_setup.h"

#include <cstdio>

#include "aeapi/constants.h"
#include "bank/slot_assignment.h"
#include "core/suite_handler.h"

namespace vellumtide {
namespace {

constexpr PF_Fixed fixed(int value) {
  return value * 65536;
}

PF_ParamDef makeControl(PF_ParamType type, const char* name) {
  PF_ParamDef def{};
  def.param_type = type;
  std::snprintf(def.name, sizeof def.name, "%s", name);
  return def;
}

PF_ParamDef makeLayer() {
  PF_ParamDef def = makeControl(PF_Param_LAYER, "layer2");
  def.u.ld.dephault = PF_LayerDefault_NONE;
  return def;
}

PF_ParamDef makeCheckbox() {
  PF_ParamDef def = makeControl(PF_Param_CHECKBOX, "checkbox");
  def.u.bd.u.nameptr = "";
  return def;
}

PF_ParamDef makePopup() {
  PF_ParamDef def = makeControl(PF_Param_POPUP, "popup");
  def.u.pd.value = 1;
  def.u.pd.dephault = 1;
  def.u.pd.num_choices = kPopupChoiceCount;
  def.u.pd.u.namesptr = kPopupChoices;
  return def;
}

PF_ParamDef makeSlider() {
  PF_ParamDef def = makeControl(PF_Param_SLIDER, "slider");
  def.u.sd.valid_min = -kFarthestValue;
  def.u.sd.valid_max = kFarthestValue;
  def.u.sd.slider_min = -kSliderReach;
  def.u.sd.slider_max = kSliderReach;
  return def;
}

PF_ParamDef makeFixedSlider() {
  PF_ParamDef def = makeControl(PF_Param_FIX_SLIDER, "fixed");
  def.u.fd.valid_min = fixed(-kFarthestValue);
  def.u.fd.valid_max = fixed(kFarthestValue);
  def.u.fd.slider_min = fixed(-kSliderReach);
  def.u.fd.slider_max = fixed(kSliderReach);
  def.u.fd.precision = 1;
  return def;
}

// Values are percents of the layer's size here, pixels in every later exchange with the host.
PF_ParamDef makePoint() {
  PF_ParamDef def = makeControl(PF_Param_POINT, "point");
  def.u.td.x_value = def.u.td.x_dephault = fixed(50);
  def.u.td.y_value = def.u.td.y_dephault = fixed(50);
  return def;
}

PF_ParamDef makeAngle() {
  PF_ParamDef def = makeControl(PF_Param_ANGLE, "angle");
  def.flags = PF_ParamFlag_START_COLLAPSED;
  return def;
}

PF_ParamDef makeColor() {
  PF_ParamDef def = makeControl(PF_Param_COLOR, "color");
  def.u.cd.value = def.u.cd.dephault = {255, 255, 0, 0};
  return def;
}

struct Group {
  BankRange range;
  PF_ParamDef (*make)();
};

}  // namespace

PF_Err setupParameters(PF_InData* in_data, PF_OutData* out_data) {
  const Group groups[] = {
      {{1, kLayerInputCount}, makeLayer},        {bankRange(Bank::Checkbox), makeCheckbox},
      {bankRange(Bank::Popup), makePopup},       {bankRange(Bank::Slider), makeSlider},
      {bankRange(Bank::Fixed), makeFixedSlider}, {bankRange(Bank::Point), makePoint},
      {bankRange(Bank::Angle), makeAngle},       {bankRange(Bank::Color), makeColor},
  };
  constexpr PF_ParamIndex kAtTheEnd = -1;
  for (const Group& group : groups) {
    for (int index = group.range.first; index < group.range.end; ++index) {
      PF_ParamDef def = group.make();
      def.uu.id = index;
      const PF_Err error = in_data->inter.add_param(in_data->effect_ref, kAtTheEnd, &def);
      if (error) return error;
    }
  }
  out_data->num_params = kControlCount;

  const ScopedSuite<PF_EffectUISuite1> ui(in_data->pica_basicP);
  if (!ui) return ui.error();
  return ui->PF_SetOptionsButtonName(in_data->effect_ref, "PB Info");
}

}  // namespace vellumtide
