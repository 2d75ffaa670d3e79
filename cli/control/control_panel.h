// The panel of an effect instance, set from texts as a person would set it.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "cli/control/control_value.h"
#include "cli/program/program_file.h"
#include "headless/effect.h"

namespace vellumtide::cli {

class ControlPanel {
 public:
  // Both must outlive the panel. Only controls that the panel shows can be set.
  ControlPanel(const Program& program, headless::Effect& effect);

  // "NAME=VALUE". NAME is the label of a control; for a vector or a matrix also the label without
  // its component, for any parameter also its name in the program. VALUE is a number, true or
  // false, x,y for a point (pixels of the full-size layer), #rrggbb[aa] or r,g,b[,a] from 0 to 1
  // for a colour, the text or the number (from 1) of a pop-up's entry, and a,b,c,... for a vector
  // or a matrix. Throws Failure (ExitStatus::Usage) that says what is there or what is expected. A
  // number outside the program's range is taken, as in the panel, and said on standard error.
  void set(const std::string& assignment);

  // The same in its parts.

  // A run of controls bound to one parameter, or some of it.
  struct Target {
    const pbParameter* parameter = nullptr;
    int slot = -1;      // first control
    int component = 0;  // of the parameter, that the first control stands for
    int count = 0;      // controls; 0 when nothing was found
  };
  Target find(std::string_view name) const;
  // A value for each control of the target. Failures and notes begin with `where`.
  std::vector<ControlValue> parse(const Target& target, const std::string& text,
                                  const std::string& where) const;
  void put(const ControlValue& value);

  const headless::Control& control(int index) const { return effect_.controls().at(index); }
  // Whether set() has given the control its value.
  bool isSet(int index) const { return set_.contains(index); }
  // Throws Failure (ExitStatus::Usage) that lists the controls there are.
  [[noreturn]] void failUnknown(const std::string& name, const std::string& where) const;

 private:
  bool isShown(int slot) const;

  const Program& program_;
  headless::Effect& effect_;
  ProgramSlots slots_;
  std::set<int> set_;
};

}  // namespace vellumtide::cli
