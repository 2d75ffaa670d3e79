#pragma once

#include <array>

// The names of the hidden window: a fixed start and the suffix that the module has set, cut to 63
// characters and a terminator.

namespace vellumtide {

using DeviceName = std::array<char, 64>;

// Composes the name that deviceClassName() answers with from then on.
const char* composeDeviceClassName();

DeviceName deviceWindowTitle();

}  // namespace vellumtide
