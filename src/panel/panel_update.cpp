#include "panel/panel_update.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "aeapi/constants.h"
#include "bank/control_labels.h"
#include "bank/program_range.h"
#include "panel/panel_layout.h"
#include "services/aeo/stream.h"

namespace vellumtide {
namespace {

constexpr double kFixedOne = 65536.0;

// The range that a slider can be dragged over: the program's as far as it names one, else the
// bank's, and the bank's alone when that leaves none.
template <class Value>
void setRange(const PanelControl& control, double one, Value validMin, Value validMax,
              Value& sliderMin, Value& sliderMax) {
  const auto limit = [&](double number) {
    return static_cast<Value>(
        std::clamp(number * one, static_cast<double>(validMin), static_cast<double>(validMax)));
  };
  const ProgramRange range = programRange(control.record->parameter, control.component);
  sliderMin = limit(range.low.value_or(-kSliderReach));
  sliderMax = limit(range.high.value_or(kSliderReach));
  if (sliderMin < sliderMax) return;
  sliderMin = limit(-kSliderReach);
  sliderMax = limit(kSliderReach);
}

void setRange(const PanelControl& control, PF_ParamDef& def) {
  if (def.param_type == PF_Param_SLIDER) {
    PF_SliderDef& slider = def.u.sd;
    setRange(control, 1, slider.valid_min, slider.valid_max, slider.slider_min, slider.slider_max);
  } else if (def.param_type == PF_Param_FIX_SLIDER) {
    PF_FixedSliderDef& slider = def.u.fd;
    setRange(control, kFixedOne, slider.valid_min, slider.valid_max, slider.slider_min,
             slider.slider_max);
  }
}

std::string entriesOf(const pbParameter& parameter) {
  std::string entries = popupEntries(parameter);
  return entries.empty() ? kPopupChoices : entries;
}

// What the host hands out may point to a text that is gone, so what was sent before is what counts.
bool areKnown(const PanelMemory& memory, PF_ParamIndex index, const std::string& entries) {
  const auto sent = memory.entries.find(index);
  return entries == (sent == memory.entries.end() ? kPopupChoices : sent->second);
}

// Name, entries and range of one control; the host is told only when that changes something.
PF_Err define(PF_InData* in_data, const PF_ParamUtilsSuite1& utils, PF_ParamIndex index,
              const PF_ParamDef& current, const PanelControl& control, PanelMemory& memory) {
  PF_ParamDef def = current;
  std::memset(def.name, 0, sizeof def.name);
  std::memcpy(def.name, control.label.data(), control.label.size());
  bool changed = std::strncmp(def.name, current.name, sizeof def.name) != 0;
  std::string entries;
  if (control.record) {
    setRange(control, def);
    changed = changed || std::memcmp(&def.u, &current.u, sizeof def.u) != 0;
    if (def.param_type == PF_Param_POPUP) {
      entries = entriesOf(control.record->parameter);
      def.u.pd.u.namesptr = entries.c_str();
      changed = changed || !areKnown(memory, index, entries);
    }
  }
  if (!changed) return PF_Err_NONE;
  def.uu.change_flags = 0;
  const PF_Err error = utils.PF_UpdateParamUI(in_data->effect_ref, index, &def);
  if (!error && !entries.empty()) memory.entries[index] = std::move(entries);
  return error;
}

// The user may have named the instance otherwise since; that stays until the program's title does
// not.
PF_Err setTitle(const AEO::Effect& effect, const pbGraph* program, PanelMemory& memory) {
  std::string title = "VTD: " + (program ? program->name : "(Invalid PB)");
  if (title == memory.title) return PF_Err_NONE;
  const PF_Err error = AEO::setInstanceTitle(effect, 1, title);
  if (!error) memory.title = std::move(title);
  return error;
}

}  // namespace

PF_Err updatePanel(PF_InData* in_data, PF_ParamDef* controls[], const pbGraph* program,
                   PanelMemory& memory) {
  const AEO::Effect effect(in_data);
  if (effect.error()) return effect.error();
  const ScopedSuite<PF_ParamUtilsSuite1> utils(in_data->pica_basicP);
  if (!utils) return utils.error();

  PF_Err first = PF_Err_NONE;
  const auto note = [&first](PF_Err error) {
    if (!first) first = error;
  };
  const PanelLayout layout = panelLayout(program);
  for (PF_ParamIndex index = 1; index < kControlCount; ++index) {
    const PanelControl& control = layout[static_cast<std::size_t>(index)];
    note(AEO::Stream(effect, index).setHidden(!control.isUsed()));
    if (control.isUsed() && controls && controls[index]) {
      note(define(in_data, *utils.operator->(), index, *controls[index], control, memory));
    }
  }
  note(setTitle(effect, program, memory));
  return first;
}

}  // namespace vellumtide
