#include "cli/control/sweep.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <regex>

#include "bank/control_labels.h"
#include "bank/program_range.h"
#include "bank/slot_assignment.h"
#include "cli/text/failure.h"
#include "cli/text/number_text.h"

namespace vellumtide::cli {
namespace {

constexpr std::size_t kMostValues = 1000;
constexpr double kDefaultCount = 5;

[[noreturn]] void fail(const std::string& sweep, const std::string& reason) {
  throw Failure(ExitStatus::Usage, "--sweep " + sweep + ": " + reason);
}

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    parts.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

// What a name stands for: a parameter, or one component of it.
struct Target {
  const pbParameter* parameter = nullptr;
  int component = 0;
  bool isScalar = false;  // one number, entry or switch

  bool takesWhole() const { return baseKind(parameter->type) == BaseKind::Int; }
};

std::optional<Target> find(const std::string& label, const Program& program) {
  for (const pbParameter& parameter : program.parameters()) {
    const ControlNeed need = controlNeed(parameter);
    const bool scalarBank = need.bank != Bank::Point && need.bank != Bank::Color;
    for (int c = 0; need.count > 1 && c < need.count; ++c) {
      if (controlLabel(parameter, c, need.count) == label) return Target{&parameter, c, scalarBank};
    }
    if (need.count > 0 && (controlLabel(parameter, 0, 1) == label || parameter.name == label)) {
      return Target{&parameter, 0, scalarBank && need.count == 1};
    }
  }
  return {};
}

std::string textOf(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", value == 0 ? 0 : value);
  return text;
}

// "A..B", "A..B/N", "A..BxS" as values; nothing when the text is none of these.
std::vector<std::string> expandRange(const std::string& text, bool whole,
                                     const std::string& sweep) {
  static const std::regex pattern("(.+?)\\.\\.(.+?)(?:([/x])([0-9.eE+-]+))?");
  std::smatch match;
  if (!std::regex_match(text, match, pattern)) return {};
  const auto from = parseNumbers(match[1].str()), to = parseNumbers(match[2].str());
  if (!from || !to || from->size() != to->size()) return {};
  const bool byStep = match[3] == "x";
  const double given = match[4].matched ? parseNumber(match[4].str()).value_or(0) : kDefaultCount;
  double count = given;
  if (byStep) {
    if (from->size() > 1 || given == 0) fail(sweep, text + ": expected a step such as x8");
    count = std::floor(std::abs(((*to)[0] - (*from)[0]) / given) + 1e-9) + 1;
  }
  if (!(count >= 1 && count <= kMostValues) || count != std::floor(count)) {
    fail(sweep, text + ": expected from 1 to 1000 values");
  }
  std::vector<std::string> values;
  for (double i = 0; i < count; ++i) {
    const double part = count > 1 ? i / (count - 1) : 0;
    std::string value;
    for (std::size_t c = 0; c < from->size(); ++c) {
      const double a = (*from)[c], b = (*to)[c];
      const double number = byStep ? a + i * std::copysign(given, b - a) : a + part * (b - a);
      value += (c > 0 ? "," : "") + textOf(whole ? std::round(number) : number);
    }
    if (values.empty() || values.back() != value) values.push_back(value);
  }
  return values;
}

std::vector<std::string> valuesOfProgram(const Target& target, const std::string& sweep) {
  const pbParameter& parameter = *target.parameter;
  const Bank bank = controlNeed(parameter).bank;
  if (bank == Bank::Checkbox) return {"off", "on"};
  const std::string entries = popupEntries(parameter);
  if (bank == Bank::Popup && !entries.empty()) return split(entries, '|');
  const ProgramRange range =
      target.isScalar ? programRange(parameter, target.component) : ProgramRange();
  if (!range.low || !range.high) fail(sweep, "expected values, as in NAME=1|2|3 or NAME=0..1/5");
  return expandRange(textOf(*range.low) + ".." + textOf(*range.high), target.takesWhole(), sweep);
}

std::vector<std::string> valuesOf(const std::string& text, const Target& target,
                                  const std::string& sweep) {
  const std::vector<std::string> entries = split(popupEntries(*target.parameter), '|');
  const bool isEntry = std::find(entries.begin(), entries.end(), text) != entries.end();
  const bool commas = target.isScalar && !isEntry && text.find('|') == std::string::npos;
  std::vector<std::string> values;
  for (const std::string& part : split(text, commas ? ',' : '|')) {
    if (part.empty()) fail(sweep, "a value is empty");
    const std::vector<std::string> range = expandRange(part, target.takesWhole(), sweep);
    values.insert(values.end(), range.begin(), range.end());
    if (range.empty()) values.push_back(part);
    if (values.size() > kMostValues) fail(sweep, "more than 1000 values");
  }
  return values;
}

}  // namespace

Sweep parseSweep(const std::string& text, const Program& program) {
  if (const std::optional<Target> target = find(text, program)) {
    return {text, valuesOfProgram(*target, text)};
  }
  // A label may hold '=' itself.
  for (std::size_t at = text.find('='); at != std::string::npos; at = text.find('=', at + 1)) {
    const std::string name = text.substr(0, at);
    if (const std::optional<Target> target = find(name, program)) {
      return {name, valuesOf(text.substr(at + 1), *target, text)};
    }
  }
  std::string known;
  for (const pbParameter& parameter : program.parameters()) {
    if (controlNeed(parameter).count > 0)
      known += (known.empty() ? "" : ", ") + ("\"" + controlLabel(parameter, 0, 1) + "\"");
  }
  fail(text, "there is no control \"" + text.substr(0, text.find('=')) + "\"; " +
                 (known.empty() ? "the program has none" : "the controls are " + known));
}

}  // namespace vellumtide::cli
