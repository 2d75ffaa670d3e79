// What a program says of the numbers of a parameter, component by component. Uses neither GL nor
// the host.
#pragma once

#include <optional>

#include "kernel/kernel_info.h"

namespace vellumtide {

// Component `index` of a value of a parameter's type.
double componentOf(const pbParameter& parameter, const ValueCells& cells, int index);

// The limits that a program names, as far as they are numbers.
struct ProgramRange {
  std::optional<double> low, high;
};

// Of component `index`, as its author means it. A range whose ends meet or are crossed is none.
ProgramRange programRange(const pbParameter& parameter, int index);

}  // namespace vellumtide
