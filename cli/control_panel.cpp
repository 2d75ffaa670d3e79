#include "cli/control_panel.h"

#include <algorithm>
#include <cmath>

#include "cli/failure.h"
#include "cli/number_text.h"
#include "params/control_labels.h"
#include "params/slot_assignment.h"

namespace vellumtide::cli {
namespace {

using headless::ColorValue;
using headless::Control;

[[noreturn]] void failExpecting(const std::string& name, const std::string& value,
                                const std::string& expected) {
  throw Failure(ExitStatus::Usage, "-p " + name + "=" + value + ": expected " + expected);
}

std::string quoted(const std::string& text) {
  return "\"" + text + "\"";
}

std::string join(const std::vector<std::string>& texts, const std::string& between) {
  std::string result;
  for (const std::string& text : texts)
    result += (result.empty() ? "" : between) + text;
  return result;
}

std::vector<std::string> splitAtCommas(const std::string& text) {
  std::vector<std::string> parts;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t comma = std::min(text.find(',', start), text.size());
    parts.push_back(text.substr(start, comma - start));
    start = comma + 1;
  }
  return parts;
}

// What a number may be: the program's own range where it has one, else the control's. In floats,
// as programs keep them, so that a limit of 0.1 takes 0.1.
struct Range {
  float low, high;
  bool whole;  // no fractions

  bool holds(double value) const {
    const float rounded = static_cast<float>(value);
    return rounded >= low && rounded <= high && (!whole || value == std::floor(value));
  }
  std::string text() const {
    return std::string(whole ? "a whole number" : "a number") + " from " + numberText(low) +
           " to " + numberText(high);
  }
};

std::optional<float> limit(const pbValue& value, pbElementType type, int component) {
  if (!value.isSet || component >= componentCount(type)) return {};
  if (baseKind(type) == BaseKind::Int) return static_cast<float>(value.cells.intAt(component));
  if (baseKind(type) == BaseKind::Float) return value.cells.floatAt(component);
  return {};
}

Range rangeOf(const Control& control, const pbParameter& parameter, int component) {
  constexpr float kAngleLimit = 32767;
  const bool isAngle = control.type == PF_Param_ANGLE;
  Range range{isAngle ? -kAngleLimit : static_cast<float>(control.validMin),
              isAngle ? kAngleLimit : static_cast<float>(control.validMax),
              control.type == PF_Param_SLIDER};
  const float low = limit(parameter.minValue, parameter.type, component).value_or(range.low);
  const float high = limit(parameter.maxValue, parameter.type, component).value_or(range.high);
  if (low <= high) {
    range.low = std::max(range.low, low);
    range.high = std::min(range.high, high);
  }
  return range;
}

std::optional<bool> parseSwitch(const std::string& text) {
  if (text == "true" || text == "on" || text == "1") return true;
  if (text == "false" || text == "off" || text == "0") return false;
  return {};
}

std::optional<ColorValue> parseColor(const std::string& text) {
  std::vector<double> parts;
  if (text.starts_with('#')) {
    if (text.size() != 7 && text.size() != 9) return {};
    if (text.find_first_not_of("0123456789abcdefABCDEF", 1) != std::string::npos) return {};
    for (std::size_t i = 1; i < text.size(); i += 2) {
      parts.push_back(std::stoi(text.substr(i, 2), nullptr, 16) / 255.0);
    }
  } else {
    parts = parseNumbers(text).value_or(parts);
  }
  if (parts.size() != 3 && parts.size() != 4) return {};
  if (std::any_of(parts.begin(), parts.end(), [](double p) { return p < 0 || p > 1; })) return {};
  return ColorValue{parts[0], parts[1], parts[2], parts.size() == 4 ? parts[3] : 1};
}

// From 1; 0 when there is no such entry. An entry's text goes before its number.
int findEntry(const std::vector<std::string>& entries, const std::string& text) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (entries[i] == text) return static_cast<int>(i) + 1;
  }
  const double number = parseNumber(text).value_or(0);
  const bool inRange = number >= 1 && number <= static_cast<double>(entries.size());
  return inRange && number == std::floor(number) ? static_cast<int>(number) : 0;
}

}  // namespace

ControlPanel::ControlPanel(const Program& program, headless::Effect& effect)
    : program_(program), effect_(effect), slots_(slotsOf(program)) {}

void ControlPanel::set(const std::string& assignment) {
  // A label may hold '=' itself.
  for (std::size_t at = assignment.find('='); at != std::string::npos;
       at = assignment.find('=', at + 1)) {
    const std::string name = assignment.substr(0, at);
    const Target target = find(name);
    if (target.count == 0) continue;
    setTarget(target, name, assignment.substr(at + 1));
    return;
  }
  const std::size_t first = assignment.find('=');
  if (first == std::string::npos) {
    throw Failure(ExitStatus::Usage, "-p " + assignment + ": expected NAME=VALUE");
  }
  throw Failure(ExitStatus::Usage, "-p " + assignment + ": there is no control " +
                                       quoted(assignment.substr(0, first)) + "; " + knownNames());
}

ControlPanel::Target ControlPanel::find(std::string_view name) const {
  Target whole, byName;
  for (std::size_t i = 0; i < program_.parameters().size(); ++i) {
    const pbParameter& parameter = program_.parameters()[i];
    const int slot = slots_.parameters[i];
    const int count = controlNeed(parameter).count;
    if (slot < 0 || !isShown(slot)) continue;
    for (int c = 0; c < count; ++c) {
      if (effect_.controls()[slot + c].label == name) return {&parameter, slot + c, c, 1};
    }
    if (whole.count == 0 && controlLabel(parameter, 0, 1) == name)
      whole = {&parameter, slot, 0, count};
    if (byName.count == 0 && parameter.name == name) byName = {&parameter, slot, 0, count};
  }
  return whole.count > 0 ? whole : byName;
}

bool ControlPanel::isShown(int slot) const {
  const Control& control = effect_.controls().at(slot);
  return !control.hidden;
}

std::string ControlPanel::knownNames() const {
  std::vector<std::string> names;
  for (const Control* control : effect_.shownControls()) {
    if (control->type != PF_Param_LAYER) names.push_back(quoted(control->label));
  }
  return names.empty() ? "the program has no controls" : "the controls are " + join(names, ", ");
}

void ControlPanel::setTarget(const Target& target, const std::string& name,
                             const std::string& value) {
  if (target.count == 1) return setNumber(target, 0, name, value);
  const std::vector<std::string> parts = splitAtCommas(value);
  if (parts.size() != static_cast<std::size_t>(target.count)) {
    failExpecting(name, value, std::to_string(target.count) + " values between commas");
  }
  for (int i = 0; i < target.count; ++i)
    setNumber(target, i, name, parts[i]);
}

void ControlPanel::setNumber(const Target& target, int offset, const std::string& name,
                             const std::string& value) {
  const int index = target.slot + offset;
  const Control& control = effect_.controls().at(index);
  switch (control.type) {
    case PF_Param_CHECKBOX: {
      const std::optional<bool> on = parseSwitch(value);
      if (!on) failExpecting(name, value, "true or false");
      return effect_.setNumber(index, *on);
    }
    case PF_Param_POPUP: {
      const std::vector<std::string> entries = control.choices();
      const int entry = findEntry(entries, value);
      if (entry == 0) {
        failExpecting(name, value,
                      "one of " + join(entries, ", ") + " or its number from 1 to " +
                          std::to_string(entries.size()));
      }
      return effect_.setNumber(index, entry);
    }
    case PF_Param_POINT: {
      const std::optional<std::vector<double>> place = parseNumbers(value);
      const bool fits = place && place->size() == 2 && std::abs((*place)[0]) <= 32767 &&
                        std::abs((*place)[1]) <= 32767;
      if (!fits) failExpecting(name, value, "x,y in pixels, each from -32767 to 32767");
      return effect_.setPoint(index, (*place)[0], (*place)[1]);
    }
    case PF_Param_COLOR: {
      const std::optional<ColorValue> color = parseColor(value);
      if (!color)
        failExpecting(name, value, "#rrggbb, #rrggbbaa or r,g,b[,a] with parts from 0 to 1");
      return effect_.setColor(index, *color);
    }
    default: {
      const Range range = rangeOf(control, *target.parameter, target.component + offset);
      const std::optional<double> number = parseNumber(value);
      if (!number || !range.holds(*number)) failExpecting(name, value, range.text());
      return effect_.setNumber(index, *number);
    }
  }
}

}  // namespace vellumtide::cli
