// What the panel shows for a bound control.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kernel/kernel_info.h"

namespace vellumtide {

// The label of component `component` of the run of `count` controls bound to a parameter: its
// display name with " x" to " w" for vectors and " [column][row]" for matrices, at most 31 bytes;
// a long name is cut so that the component stays readable.
std::string controlLabel(const pbParameter& parameter, int component, int count);

// The entries a pop-up offers instead of its numbers, joined by "|" and at most as many as the
// host's list holds; empty when the program names none.
std::string popupEntries(const pbParameter& parameter);

}  // namespace vellumtide
