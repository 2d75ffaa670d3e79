// Values of controls, read from texts by the rules of each kind of control.
#pragma once

#include <array>
#include <string>

#include "headless/effect.h"
#include "kernel/kernel_info.h"

namespace vellumtide::cli {

struct ControlValue {
  int control = -1;  // its index in the panel
  // A number (degrees, an entry from 1, 0 or 1 of a check box), x and y of a point in full-size
  // pixels, or red, green, blue and alpha from 0 to 1; the others are 0.
  std::array<double, 4> parts{};
};

// Reads what ControlPanel documents: any value that the control can hold. Throws Failure
// (ExitStatus::Usage): `where`, ": expected" and what.
ControlValue parseControlValue(const headless::Control& control, const std::string& text,
                               const std::string& where);

// What to say of a number that the control takes and the program's range does not hold; "" of any
// other. `component` is the one of the parameter that the control stands for.
std::string rangeNote(const headless::Control& control, const pbParameter& parameter, int component,
                      const ControlValue& value);

void putValue(headless::Effect& effect, const ControlValue& value);

// "", or what the control is when its values have nothing between them: "a check box", "a pop-up".
std::string switchName(const headless::Control& control);

}  // namespace vellumtide::cli
