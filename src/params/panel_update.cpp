#include "params/panel_update.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "aeapi/constants.h"
#include "params/control_labels.h"
#include "params/panel_layout.h"
#include "services/aeo/stream.h"

namespace vellumtide {
namespace {

constexpr double kFixedOne = 65536.0;

// Narrows a slider's visible range to the program's minimum and maximum, as far as it names them
// and they leave a range.
template <class Value, class Convert>
void setRange(const PanelControl& control, Value validMin, Value validMax, Value& sliderMin,
              Value& sliderMax, Convert convert) {
  const pbParameter& parameter = control.record->parameter;
  const auto limit = [&](const pbValue& value, Value otherwise) {
    if (!value.isSet) return otherwise;
    const double wanted = convert(componentOf(parameter, value.cells, control.component));
    if (std::isnan(wanted)) return otherwise;
    return static_cast<Value>(
        std::clamp(wanted, static_cast<double>(validMin), static_cast<double>(validMax)));
  };
  const Value low = limit(parameter.minValue, sliderMin);
  const Value high = limit(parameter.maxValue, sliderMax);
  if (low >= high) return;
  sliderMin = low;
  sliderMax = high;
}

void setRange(const PanelControl& control, PF_ParamDef& def) {
  if (def.param_type == PF_Param_SLIDER) {
    PF_SliderDef& slider = def.u.sd;
    setRange(control, slider.valid_min, slider.valid_max, slider.slider_min, slider.slider_max,
             [](double value) { return value; });
  } else if (def.param_type == PF_Param_FIX_SLIDER) {
    PF_FixedSliderDef& slider = def.u.fd;
    setRange(control, slider.valid_min, slider.valid_max, slider.slider_min, slider.slider_max,
             [](double value) { return value * kFixedOne; });
  }
}

// Names, entries and range of one control; the host is told only when that changes something.
PF_Err define(PF_InData* in_data, const PF_ParamUtilsSuite1& utils, PF_ParamIndex index,
              const PF_ParamDef& current, const PanelControl& control) {
  PF_ParamDef def = current;
  std::memset(def.name, 0, sizeof def.name);
  std::memcpy(def.name, control.label.data(), control.label.size());
  std::string entries;
  bool changed = std::strncmp(def.name, current.name, sizeof def.name) != 0;
  if (control.record) {
    setRange(control, def);
    changed = changed || std::memcmp(&def.u, &current.u, sizeof def.u) != 0;
    if (def.param_type == PF_Param_POPUP) {
      entries = popupEntries(control.record->parameter);
      const char* known = current.u.pd.u.namesptr;
      if (!entries.empty() && (!known || entries != known)) {
        def.u.pd.u.namesptr = entries.c_str();
        changed = true;
      }
    }
  }
  if (!changed) return PF_Err_NONE;
  def.uu.change_flags = 0;
  return utils.PF_UpdateParamUI(in_data->effect_ref, index, &def);
}

std::string instanceTitle(const pbGraph* program) {
  return "VTD: " + (program ? program->name : "(Invalid PB)");
}

PF_Err setDefault(const AEO::Effect& effect, const PF_InData& in, const pbGraphParameter& record,
                  Bank bank, int component) {
  const pbParameter& parameter = record.parameter;
  const pbValue& value = parameter.defaultValue;
  const RelativePoint& relative = parameter.aePointRelativeDefaultValue;
  if (!value.isSet && !(bank == Bank::Point && relative.isSet)) return PF_Err_NONE;

  const AEO::Stream stream(effect, record.slot + component);
  const auto at = [&](int index) {
    const double number = componentOf(parameter, value.cells, index);
    return std::isnan(number) ? 0.0 : std::clamp(number, -32767.0, 32767.0);
  };
  switch (bank) {
    case Bank::Checkbox:
      return stream.setOneD(at(component) != 0.0 ? 1.0 : 0.0);
    case Bank::Popup:
      return stream.setOneD(std::clamp(std::floor(at(0)), 0.0, 31.0) + 1.0);
    case Bank::Slider:
    case Bank::Fixed:
    case Bank::Angle:
      return stream.setOneD(at(component));
    case Bank::Point:
      return value.isSet ? stream.setTwoD(at(0), at(1))
                         : stream.setTwoD(static_cast<double>(relative.x) * in.width,
                                          static_cast<double>(relative.y) * in.height);
    case Bank::Color: {
      const bool hasAlpha = componentCount(parameter.type) >= 4;
      return stream.setColor(at(0), at(1), at(2), hasAlpha ? at(3) : 1.0);
    }
    case Bank::None:
      break;
  }
  return PF_Err_NONE;
}

}  // namespace

PF_Err updatePanel(PF_InData* in_data, PF_ParamDef* controls[], const pbGraph* program) {
  const AEO::Effect effect(in_data);
  if (effect.error()) return effect.error();
  const ScopedSuite<PF_ParamUtilsSuite1> utils(in_data->pica_basicP);
  if (!utils) return utils.error();

  const PanelLayout layout = panelLayout(program);
  for (PF_ParamIndex index = 1; index < kControlCount; ++index) {
    const PanelControl& control = layout[static_cast<std::size_t>(index)];
    const AEO::Stream stream(effect, index);
    PF_Err error = stream.setHidden(!control.isUsed());
    if (!error && control.isUsed() && controls && controls[index]) {
      error = define(in_data, *utils.operator->(), index, *controls[index], control);
    }
    if (error) return error;
  }
  return AEO::setInstanceTitle(effect, 1, instanceTitle(program));
}

PF_Err adoptDefaults(PF_InData* in_data, const pbGraph& program) {
  const AEO::Effect effect(in_data);
  if (effect.error()) return effect.error();
  for (const auto& record : program.parameters) {
    if (record->slot < 0) continue;
    const ControlNeed need = controlNeed(record->parameter);
    for (int component = 0; component < need.count; ++component) {
      const PF_Err error = setDefault(effect, *in_data, *record, need.bank, component);
      if (error) return error;
    }
  }
  return PF_Err_NONE;
}

}  // namespace vellumtide
