#include "bank/program_range.h"

#include <cmath>

namespace vellumtide {

double componentOf(const pbParameter& parameter, const ValueCells& cells, int index) {
  const auto at = static_cast<std::size_t>(index);
  switch (baseKind(parameter.type)) {
    case BaseKind::Int:
      return cells.intAt(at);
    case BaseKind::Float:
      return static_cast<double>(cells.floatAt(at));
    case BaseKind::Bool:
      return cells.boolAt(at) ? 1.0 : 0.0;
    case BaseKind::None:
      break;
  }
  return 0.0;
}

ProgramRange programRange(const pbParameter& parameter, int index) {
  const auto limit = [&](const pbValue& value) -> std::optional<double> {
    if (!value.isSet || index >= componentCount(parameter.type)) return std::nullopt;
    const double named = componentOf(parameter, value.meantCells(), index);
    return std::isnan(named) ? std::nullopt : std::optional(named);
  };
  const ProgramRange range{limit(parameter.minValue), limit(parameter.maxValue)};
  const bool isNone = range.low && range.high && *range.low >= *range.high;
  return isNone ? ProgramRange() : range;
}

}  // namespace vellumtide
