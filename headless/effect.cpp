#include "headless/effect.h"

#include <algorithm>
#include <stdexcept>

namespace vellumtide::headless {
namespace {

bool notAfter(A_Time a, A_Time b) {
  return static_cast<int64_t>(a.value) * b.scale <= static_cast<int64_t>(b.value) * a.scale;
}

Control& typed(Effect& effect, PF_ParamIndex index, bool fits, const char* what) {
  Control& control = effect.control(index);
  if (!fits) {
    throw std::invalid_argument("control " + std::to_string(index) + " \"" + control.label +
                                "\" is not a " + what);
  }
  return control;
}

}  // namespace

Effect::Effect(Host& host, Layer& layer, const std::vector<PF_ParamDef>& declared)
    : host_(&host), layer_(&layer) {
  for (const PF_ParamDef& def : declared) {
    Control control = makeControl(def, static_cast<PF_ParamIndex>(controls_.size()), layer.width(),
                                  layer.height());
    if (def.param_type == PF_Param_LAYER &&
        (controls_.empty() || def.u.ld.dephault == PF_LayerDefault_MYSELF)) {
      control.layerId = layer.id();
    }
    controls_.push_back(std::move(control));
  }
}

std::vector<const Control*> Effect::shownControls() const {
  std::vector<const Control*> shown;
  for (const Control& control : controls_) {
    if (control.index > 0 && !control.hidden) shown.push_back(&control);
  }
  return shown;
}

Control* Effect::findShown(const std::string& label) {
  for (Control& control : controls_) {
    if (control.index > 0 && !control.hidden && control.label == label) return &control;
  }
  return nullptr;
}

void Effect::setNumber(PF_ParamIndex index, double value) {
  Control& control = typed(*this, index, this->control(index).isNumber(), "number");
  control.number = control.clamped(value);
  keyframes_.erase(index);
}

void Effect::setPoint(PF_ParamIndex index, double x, double y) {
  typed(*this, index, control(index).type == PF_Param_POINT, "point").point = {x, y};
}

void Effect::setColor(PF_ParamIndex index, ColorValue color) {
  typed(*this, index, control(index).type == PF_Param_COLOR, "colour").color = color;
}

void Effect::setLayer(PF_ParamIndex index, const Layer* layer) {
  typed(*this, index, index > 0 && control(index).type == PF_Param_LAYER, "layer").layerId =
      layer ? layer->id() : 0;
}

void Effect::setNumberAt(PF_ParamIndex index, A_Time time, double value) {
  const Control& control = typed(*this, index, this->control(index).isNumber(), "number");
  auto& keys = keyframes_[index];
  const auto place = std::find_if(keys.begin(), keys.end(),
                                  [&](const auto& key) { return !notAfter(key.first, time); });
  keys.insert(place, {time, control.clamped(value)});
}

Control Effect::controlAt(PF_ParamIndex index, A_Time time) const {
  Control control = controls_.at(static_cast<size_t>(index));
  const auto keys = keyframes_.find(index);
  if (keys == keyframes_.end()) return control;
  control.number = keys->second.front().second;
  for (const auto& [from, value] : keys->second) {
    if (notAfter(from, time)) control.number = value;
  }
  return control;
}

}  // namespace vellumtide::headless
