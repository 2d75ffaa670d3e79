#include "panel/default_values.h"

#include <algorithm>
#include <cmath>

#include "bank/program_range.h"
#include "bank/slot_assignment.h"
#include "nodes/pb_graph.h"
#include "services/aeo/stream.h"

namespace vellumtide {
namespace {

// No control takes what is not a number; 0 stands for it.
double within(double value, double low, double high) {
  return std::isnan(value) ? 0.0 : std::clamp(value, low, high);
}

double reachable(double value) {
  return within(value, -kFarthestValue, kFarthestValue);
}

A_Time currentTime(const PF_InData& in) {
  return {in.current_time, in.time_scale ? in.time_scale : 1};
}

// The default of one control in the form and the range of its bank; nothing when the program names
// none. A point takes the default that is relative to the layer first.
std::optional<AEGP_StreamVal2> defaultOf(const PF_InData& in, const pbParameter& parameter,
                                         Bank bank, int component) {
  AEGP_StreamVal2 result{};
  const RelativePoint& relative = parameter.aePointRelativeDefaultValue;
  if (bank == Bank::Point && relative.isSet) {
    const auto [x, y] = relative.meantPlace();
    result.two_d = {reachable(static_cast<double>(x) * in.width),
                    reachable(static_cast<double>(y) * in.height)};
    return result;
  }
  const pbValue& value = parameter.defaultValue;
  if (!value.isSet) return std::nullopt;
  const auto at = [&](int index) { return componentOf(parameter, value.meantCells(), index); };
  const auto part = [&](int index) { return within(at(index), 0, 1); };
  switch (bank) {
    case Bank::Checkbox:
      result.one_d = at(component) != 0.0 ? 1.0 : 0.0;
      break;
    case Bank::Popup:
      result.one_d = within(std::floor(at(0)), 0, kPopupChoiceCount - 1) + 1;
      break;
    case Bank::Slider:
    case Bank::Fixed:
    case Bank::Angle:
      result.one_d = reachable(at(component));
      break;
    case Bank::Point:
      result.two_d = {reachable(at(0)), reachable(at(1))};
      break;
    case Bank::Color: {
      const bool hasAlpha = componentCount(parameter.type) >= 4;
      result.color = {hasAlpha ? part(3) : 1, part(0), part(1), part(2)};
      break;
    }
    case Bank::None:
      return std::nullopt;
  }
  return result;
}

bool isSame(const AEGP_StreamVal2& a, const AEGP_StreamVal2& b, Bank bank) {
  if (bank == Bank::Point) return a.two_d.x == b.two_d.x && a.two_d.y == b.two_d.y;
  if (bank != Bank::Color) return a.one_d == b.one_d;
  return a.color.alphaF == b.color.alphaF && a.color.redF == b.color.redF &&
         a.color.greenF == b.color.greenF && a.color.blueF == b.color.blueF;
}

PF_Err setValue(const AEO::Effect& effect, const PF_InData& in, PF_ParamIndex index, Bank bank,
                const AEGP_StreamVal2& wanted) {
  const AEO::Stream stream(effect, index);
  const AEO::StreamValue present(stream, currentTime(in));
  if (!present.error() && isSame(present.value(), wanted, bank)) return PF_Err_NONE;
  return stream.setValue(wanted);
}

}  // namespace

PF_Err adoptDefaults(PF_InData* in_data, const pbGraph& program, bool& asked) {
  asked = false;
  const AEO::Effect effect(in_data);
  if (effect.error()) return effect.error();
  asked = true;
  PF_Err first = PF_Err_NONE;
  for (const auto& record : program.parameters) {
    if (record->slot < 0) continue;
    const ControlNeed need = controlNeed(record->parameter);
    for (int component = 0; component < need.count; ++component) {
      const auto wanted = defaultOf(*in_data, record->parameter, need.bank, component);
      if (!wanted) continue;
      const auto set = [&] {
        return setValue(effect, *in_data, record->slot + component, need.bank, *wanted);
      };
      // There is no later time for defaults: a want of memory that has passed must not lose one.
      PF_Err error = set();
      if (error) error = set();
      if (!first) first = error;
    }
  }
  return first;
}

}  // namespace vellumtide
