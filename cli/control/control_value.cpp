#include "cli/control/control_value.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "bank/program_range.h"
#include "bank/slot_assignment.h"
#include "cli/text/failure.h"
#include "cli/text/number_text.h"

namespace vellumtide::cli {
namespace {

using headless::Control;

std::string joined(const std::vector<std::string>& entries) {
  std::string result;
  for (const std::string& entry : entries)
    result += (result.empty() ? "" : ", ") + entry;
  return result;
}

// What a number may be for a control, whatever the program's range: in the panel that only narrows
// a slider.
struct Range {
  double low, high;
  bool whole;  // no fractions

  bool holds(double value) const {
    return value >= low && value <= high && (!whole || value == std::floor(value));
  }
  std::string text() const {
    return std::string(whole ? "a whole number" : "a number") + " from " +
           numberText(static_cast<float>(low)) + " to " + numberText(static_cast<float>(high));
  }
};

Range rangeOf(const Control& control) {
  if (control.type == PF_Param_ANGLE) return {-kFarthestValue, kFarthestValue, false};
  return {control.validMin, control.validMax, control.type == PF_Param_SLIDER};
}

// In floats, as programs keep their limits, so that a limit of 0.1 takes 0.1.
bool isOutside(double value, const ProgramRange& range) {
  const auto rounded = static_cast<float>(value);
  return (range.low && rounded < static_cast<float>(*range.low)) ||
         (range.high && rounded > static_cast<float>(*range.high));
}

std::string textOf(const ProgramRange& range) {
  const auto end = [](const char* word, const std::optional<double>& limit) {
    return limit ? std::string(word) + numberText(static_cast<float>(*limit)) : "";
  };
  return end(" from ", range.low) + end(" to ", range.high);
}

// ", but y is 99999": which part of a point or a colour is out of its range; "" when none is.
std::string misfit(const std::vector<double>& parts, const std::vector<const char*>& names,
                   double low, double high) {
  for (std::size_t i = 0; i < parts.size() && i < names.size(); ++i) {
    if (parts[i] < low || parts[i] > high) {
      return std::string(", but ") + names[i] + " is " + numberText(static_cast<float>(parts[i]));
    }
  }
  return {};
}

std::optional<bool> parseSwitch(const std::string& text) {
  if (text == "true" || text == "on" || text == "1") return true;
  if (text == "false" || text == "off" || text == "0") return false;
  return {};
}

using Parts = std::optional<std::array<double, 4>>;

// Each adds to `expected` which part does not fit.
Parts parseColor(const std::string& text, std::string& expected) {
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
  const std::string wrong = misfit(parts, {"red", "green", "blue", "alpha"}, 0, 1);
  expected += wrong;
  if (!wrong.empty()) return {};
  return std::array<double, 4>{parts[0], parts[1], parts[2], parts.size() == 4 ? parts[3] : 1};
}

Parts parsePoint(const std::string& text, std::string& expected) {
  const std::vector<double> place = parseNumbers(text).value_or(std::vector<double>());
  if (place.size() != 2) return {};
  const std::string wrong = misfit(place, {"x", "y"}, -kFarthestValue, kFarthestValue);
  expected += wrong;
  if (!wrong.empty()) return {};
  return std::array<double, 4>{place[0], place[1]};
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

ControlValue parseControlValue(const Control& control, const std::string& text,
                               const std::string& where) {
  Parts parts;
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
      expected = "x,y in pixels, each from -32767 to 32767";
      parts = parsePoint(text, expected);
      break;
    case PF_Param_COLOR:
      expected = "#rrggbb, #rrggbbaa or r,g,b[,a] with parts from 0 to 1";
      parts = parseColor(text, expected);
      break;
    default: {
      const Range range = rangeOf(control);
      const std::optional<double> number = parseNumber(text);
      if (number && range.holds(*number)) parts = {*number};
      expected = range.text();
      break;
    }
  }
  if (!parts) throw Failure(ExitStatus::Usage, where + ": expected " + expected);
  return {static_cast<int>(control.index), *parts};
}

std::string rangeNote(const Control& control, const pbParameter& parameter, int component,
                      const ControlValue& value) {
  const bool isNumber = control.type == PF_Param_SLIDER || control.type == PF_Param_FIX_SLIDER ||
                        control.type == PF_Param_ANGLE;
  const ProgramRange range = programRange(parameter, component);
  if (!isNumber || !isOutside(value.parts[0], range)) return {};
  return "\"" + control.label + "\" is outside the program's range" + textOf(range);
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
