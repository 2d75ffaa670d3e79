// What a program says of a parameter, as texts for people.
#pragma once

#include <string>

#include "kernel/kernel_info.h"

namespace vellumtide::cli {

// "slider", "fixed", "check box", "colour", ...; "none" when no control shows it.
std::string controlKind(const pbParameter& parameter);

// "0.5", "1,2,3", "0 each"; "-" for a type without components.
std::string cellsText(const ValueCells& cells, pbElementType type);

// The same of what is meant by a value; "-" when there is none.
std::string valueText(const pbValue& value, pbElementType type);

// The default as the control shows it: a pop-up's entry, a point relative to the layer.
std::string defaultText(const pbParameter& parameter);

}  // namespace vellumtide::cli
