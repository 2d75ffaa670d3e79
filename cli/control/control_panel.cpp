#include "cli/control/control_panel.h"

#include <algorithm>

#include "bank/control_labels.h"
#include "bank/slot_assignment.h"
#include "cli/text/failure.h"
#include "cli/text/messages.h"

namespace vellumtide::cli {
namespace {

using headless::Control;

std::vector<std::string> splitAtCommas(const std::string& text) {
  std::vector<std::string> parts;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t comma = std::min(text.find(',', start), text.size());
    parts.push_back(text.substr(start, comma - start));
    start = comma + 1;
  }
  return parts;
}

}  // namespace

ControlPanel::ControlPanel(const Program& program, headless::Effect& effect)
    : program_(program), effect_(effect), slots_(slotsOf(program)) {}

void ControlPanel::set(const std::string& assignment) {
  const std::string where = "-p " + assignment;
  // A label may hold '=' itself.
  for (std::size_t at = assignment.find('='); at != std::string::npos;
       at = assignment.find('=', at + 1)) {
    const Target target = find(std::string_view(assignment).substr(0, at));
    if (target.count == 0) continue;
    for (const ControlValue& value : parse(target, assignment.substr(at + 1), where)) {
      put(value);
      set_.insert(value.control);
    }
    return;
  }
  const std::size_t first = assignment.find('=');
  if (first == std::string::npos) {
    throw Failure(ExitStatus::Usage, where + ": expected NAME=VALUE");
  }
  failUnknown(assignment.substr(0, first), where);
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

void ControlPanel::failUnknown(const std::string& name, const std::string& where) const {
  std::string known;
  for (const Control* control : effect_.shownControls()) {
    if (control->type == PF_Param_LAYER) continue;
    known += (known.empty() ? "the controls are \"" : ", \"") + control->label + "\"";
  }
  if (known.empty()) known = "the program has no controls";
  throw Failure(ExitStatus::Usage, where + ": there is no control \"" + name + "\"; " + known);
}

std::vector<ControlValue> ControlPanel::parse(const Target& target, const std::string& text,
                                              const std::string& where) const {
  const std::vector<std::string> parts =
      target.count == 1 ? std::vector{text} : splitAtCommas(text);
  if (parts.size() != static_cast<std::size_t>(target.count)) {
    throw Failure(ExitStatus::Usage,
                  where + ": expected " + std::to_string(target.count) + " values between commas");
  }
  std::vector<ControlValue> values;
  for (int i = 0; i < target.count; ++i) {
    const Control& one = control(target.slot + i);
    const std::string of = target.count == 1 ? "" : ": \"" + one.label + "\"";
    values.push_back(parseControlValue(one, parts[i], where + of));
    const std::string note = rangeNote(one, *target.parameter, target.component + i, values.back());
    if (!note.empty()) say(where + ": note: " + note);
  }
  return values;
}

void ControlPanel::put(const ControlValue& value) {
  putValue(effect_, value);
}

}  // namespace vellumtide::cli
