#include "cli/program/parameter_text.h"

#include "bank/control_labels.h"
#include "bank/program_range.h"
#include "bank/slot_assignment.h"
#include "cli/text/messages.h"
#include "cli/text/number_text.h"

namespace vellumtide::cli {
namespace {

std::string componentText(const ValueCells& cells, BaseKind kind, int i) {
  if (kind == BaseKind::Int) return std::to_string(cells.intAt(i));
  if (kind == BaseKind::Bool) return cells.boolAt(i) ? "true" : "false";
  return numberText(cells.floatAt(i));
}

// Entry `index` of a list of entries separated by "|"; empty when there is none.
std::string entryText(const std::string& entries, int index) {
  std::size_t start = 0;
  for (; index > 0 && start != std::string::npos; --index) {
    const std::size_t bar = entries.find('|', start);
    start = bar == std::string::npos ? bar : bar + 1;
  }
  if (index < 0 || start == std::string::npos) return {};
  return entries.substr(start, entries.find('|', start) - start);
}

}  // namespace

std::string controlKind(const pbParameter& parameter) {
  static constexpr const char* kNames[] = {"none",  "check box", "pop-up", "slider",
                                           "fixed", "point",     "angle",  "colour"};
  return kNames[static_cast<int>(controlNeed(parameter).bank)];
}

std::string cellsText(const ValueCells& cells, pbElementType type) {
  const BaseKind kind = baseKind(type);
  if (kind == BaseKind::None) return "-";
  std::string text = componentText(cells, kind, 0);
  const std::string first = text;
  bool allEqual = true;
  for (int i = 1; i < componentCount(type); ++i) {
    const std::string component = componentText(cells, kind, i);
    allEqual = allEqual && component == first;
    text += "," + component;
  }
  return allEqual && componentCount(type) > 1 ? first + " each" : text;
}

std::string valueText(const pbValue& value, pbElementType type) {
  return value.isSet ? cellsText(value.meantCells(), type) : "-";
}

std::string defaultText(const pbParameter& parameter) {
  const RelativePoint& relative = parameter.aePointRelativeDefaultValue;
  const Bank bank = controlNeed(parameter).bank;
  if (relative.isSet && (bank == Bank::Point || !parameter.defaultValue.isSet)) {
    const auto [x, y] = relative.meantPlace();
    return numberText(x * 100) + "%," + numberText(y * 100) + "%";
  }
  if (bank == Bank::Popup && parameter.defaultValue.isSet) {
    const double number = componentOf(parameter, parameter.defaultValue.meantCells(), 0);
    const bool isEntry = number >= 0 && number < kPopupChoiceCount;
    const std::string entry =
        isEntry ? entryText(popupEntries(parameter), static_cast<int>(number)) : "";
    if (!entry.empty()) return onOneLine(entry);
  }
  return valueText(parameter.defaultValue, parameter.type);
}

}  // namespace vellumtide::cli
