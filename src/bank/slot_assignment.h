// The fixed bank of 124 host controls, and which of them a program's inputs and parameters are
// bound to. Projects depend on every number here. Pure: uses neither GL nor the host.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "kernel/kernel_info.h"

namespace vellumtide {

// Groups of like controls in the bank.
enum class Bank { None, Checkbox, Popup, Slider, Fixed, Point, Angle, Color };

// Host parameter indices [first, end).
struct BankRange {
  int first;
  int end;
};

constexpr int kControlCount = 124;  // parameter 0, the effect's own layer, included
constexpr int kLayerInputCount = 4;

// What the bank's controls hold, whatever a program says: numbers of sliders, degrees and pixels.
constexpr int kFarthestValue = 32767;
constexpr int kSliderReach = 254;  // what a slider can be dragged over when no program narrows it

constexpr const char* kPopupChoices =
    "0|1|2|3|4|5|6|7|8|9|10|11|12|13|14|15|16|17|18|19|20|21|22|23|24|25|26|27|28|29|30|31";
constexpr int kPopupChoiceCount = 32;

BankRange bankRange(Bank bank);

// The controls that a parameter asks for: `count` consecutive ones of a bank. None for types that
// no control can show.
struct ControlNeed {
  Bank bank = Bank::None;
  int count = 0;
};

ControlNeed controlNeed(const pbParameter& parameter);

// The layer control of the n-th image input: 0 to 3, or -1 from the fifth input on.
int inputSlot(std::size_t inputIndex);

// For each parameter, in declaration order, the first control bound to it; -1 when its bank has no
// room left or it needs none. A parameter that does not fit leaves the room to later, smaller ones.
std::vector<int> assignParameterSlots(std::span<const pbParameter* const> parameters);

}  // namespace vellumtide
