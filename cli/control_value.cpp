#include "cli/control_value.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "cli/failure.h"
#include "cli/number_text.h"

namespace vellumtide::cli {
namespace {

using headless::Control;

constexpr double kFarthestPoint = 32767;

std::string joined(const std::vector<std::string>& entries) {
  std::string result;
  for (const std::string& entry : entries)
    result += (result.empty() ? "" : ", ") + entry;
  return result;
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

std::optional<std::array<double, 4>> parseColor(const std::string& text) {
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
  return std::array<double, 4>{parts[0], parts[1], parts[2], parts.size() == 4 ? parts[3] : 1};
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

std::optional<std::array<double, 4>> parsePoint(const std::string& text) {
  const std::vector<double> place = parseNumbers(text).value_or(std::vector<double>());
  if (place.size() != 2) return {};
  if (std::abs(place[0]) > kFarthestPoint || std::abs(place[1]) > kFarthestPoint) return {};
  return std::array<double, 4>{place[0], place[1]};
}

}  // namespace

ControlValue parseControlValue(const Control& control, const pbParameter& parameter, int component,
                               const std::string& text, const std::string& where) {
  std::optional<std::array<double, 4>> parts;
  std::string expected;
  switch (control.type) {
    case PF_Param_CHECKBOX: {
      const std::optional<bool> on = parseSwitch(text);
      if (on) parts = {*on ? 1.0 : 0.0};
      expected = "true or false";
      break;
    }
    case PF_Param_POPUP: {
      const std::vector<std::string> entries = control.choices();
      const int entry = findEntry(entries, text);
      if (entry != 0) parts = {static_cast<double>(entry)};
      expected = "one of " + joined(entries) + " or its number from 1 to " +
                 std::to_string(entries.size());
      break;
    }
    case PF_Param_POINT:
      parts = parsePoint(text);
      expected = "x,y in pixels, each from -32767 to 32767";
      break;
    case PF_Param_COLOR:
      parts = parseColor(text);
      expected = "#rrggbb, #rrggbbaa or r,g,b[,a] with parts from 0 to 1";
      break;
    default: {
      const Range range = rangeOf(control, parameter, component);
      const std::optional<double> number = parseNumber(text);
      if (number && range.holds(*number)) parts = {*number};
      expected = range.text();
      break;
    }
  }
  if (!parts) throw Failure(ExitStatus::Usage, where + ": expected " + expected);
  return {static_cast<int>(control.index), *parts};
}

void putValue(headless::Effect& effect, const ControlValue& value) {
  const std::array<double, 4>& parts = value.parts;
  switch (effect.control(value.control).type) {
    case PF_Param_POINT:
      return effect.setPoint(value.control, parts[0], parts[1]);
    case PF_Param_COLOR:
      return effect.setColor(value.control, {parts[0], parts[1], parts[2], parts[3]});
    default:
      return effect.setNumber(value.control, parts[0]);
  }
}

std::string switchName(const Control& control) {
  if (control.type == PF_Param_CHECKBOX) return "a check box";
  return control.type == PF_Param_POPUP ? "a pop-up" : "";
}

}  // namespace vellumtide::cli
