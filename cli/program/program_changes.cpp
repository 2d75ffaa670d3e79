#include "cli/program/program_changes.h"

#include <algorithm>
#include <utility>

#include "bank/control_labels.h"
#include "cli/program/parameter_text.h"
#include "cli/text/messages.h"

namespace vellumtide::cli {
namespace {

// What a thing is like: names of properties, each with its value; "-" for one that it lacks.
using Properties = std::vector<std::pair<std::string, std::string>>;
constexpr const char* kNone = "-";

std::string inQuotes(std::string_view text) {
  return "\"" + onOneLine(text) + "\"";
}

Properties propertiesOf(const Program& program) {
  return {{"name", inQuotes(program.metadata().name)},
          {"version", std::to_string(program.metadata().version)}};
}

Properties propertiesOf(const pbVariable& input) {
  return {{"name", inQuotes(input.name)}, {"type", std::string(typeName(input.type))}};
}

Properties propertiesOf(const pbParameter& parameter) {
  const std::string label = controlLabel(parameter, 0, 1), entries = popupEntries(parameter);
  return {{"type", std::string(typeName(parameter.type))},
          {"control", controlKind(parameter)},
          {"label", label == std::string_view(parameter.name) ? kNone : inQuotes(label)},
          {"default", defaultText(parameter)},
          {"from", valueText(parameter.minValue, parameter.type)},
          {"to", valueText(parameter.maxValue, parameter.type)},
          {"entries", entries.empty() ? kNone : inQuotes(entries)}};
}

// "default 0.5 -> 0.8, to 1 -> 2"; "" when nothing differs.
std::string differences(const Properties& before, const Properties& after) {
  std::string text;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const auto& [name, old] = before[i];
    if (old == after[i].second) continue;
    text += (text.empty() ? "" : ", ") + name + " " + old + " -> " + after[i].second;
  }
  return text;
}

std::string description(const Properties& properties) {
  std::string text;
  for (const auto& [name, value] : properties) {
    if (value != kNone) text += (text.empty() ? "" : ", ") + name + " " + value;
  }
  return text;
}

void addDifferences(std::vector<std::string>& lines, const std::string& what,
                    const Properties& before, const Properties& after) {
  const std::string text = differences(before, after);
  if (!text.empty()) lines.push_back(what + ": " + text);
}

void addInputs(std::vector<std::string>& lines, const std::vector<pbVariable>& before,
               const std::vector<pbVariable>& after) {
  for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
    const std::string what = "input " + std::to_string(i + 1);
    if (i >= after.size()) {
      lines.push_back(what + " is gone: " + description(propertiesOf(before[i])));
    } else if (i >= before.size()) {
      lines.push_back(what + " is new: " + description(propertiesOf(after[i])));
    } else {
      addDifferences(lines, what, propertiesOf(before[i]), propertiesOf(after[i]));
    }
  }
}

const pbParameter* find(const std::vector<pbParameter>& parameters, std::string_view name) {
  const auto found = std::find_if(parameters.begin(), parameters.end(),
                                  [&](const pbParameter& p) { return p.name == name; });
  return found == parameters.end() ? nullptr : &*found;
}

void addParameters(std::vector<std::string>& lines, const std::vector<pbParameter>& before,
                   const std::vector<pbParameter>& after) {
  for (const pbParameter& old : before) {
    if (!find(after, old.name)) lines.push_back("parameter " + inQuotes(old.name) + " is gone");
  }
  for (const pbParameter& parameter : after) {
    const std::string what = "parameter " + inQuotes(parameter.name);
    if (const pbParameter* old = find(before, parameter.name)) {
      addDifferences(lines, what, propertiesOf(*old), propertiesOf(parameter));
    } else {
      lines.push_back(what + " is new: " + description(propertiesOf(parameter)));
    }
  }
}

}  // namespace

std::vector<std::string> programChanges(const Program& before, const Program& after) {
  std::vector<std::string> lines;
  addDifferences(lines, "program", propertiesOf(before), propertiesOf(after));
  addInputs(lines, before.inputs(), after.inputs());
  addParameters(lines, before.parameters(), after.parameters());
  return lines;
}

}  // namespace vellumtide::cli
