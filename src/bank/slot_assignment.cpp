#include "bank/slot_assignment.h"

#include <array>

namespace vellumtide {
namespace {

constexpr std::array<BankRange, 8> kRanges = {{
    {0, 0},      // None
    {4, 24},     // Checkbox
    {24, 34},    // Popup
    {34, 44},    // Slider
    {44, 94},    // Fixed
    {94, 104},   // Point
    {104, 114},  // Angle
    {114, 124},  // Color
}};
static_assert(kRanges.back().end == kControlCount);

Bank bankOfControl(pbUIControl control) {
  switch (control) {
    case pbUIControl::Popup:
      return Bank::Popup;
    case pbUIControl::Angle:
      return Bank::Angle;
    case pbUIControl::PercentSlider:
    case pbUIControl::OneChannelColor:
      return Bank::Fixed;
    case pbUIControl::Point:
      return Bank::Point;
    case pbUIControl::Color:
      return Bank::Color;
    case pbUIControl::None:
      break;
  }
  return Bank::None;
}

// Parameter types that are not listed go by their element type.
Bank bankOfParameterType(pbParameterType type) {
  switch (type) {
    case pbParameterType::AngleDegrees:
      return Bank::Angle;
    case pbParameterType::Position:
      return Bank::Point;
    case pbParameterType::ColorRGB:
    case pbParameterType::ColorRGBA:
      return Bank::Color;
    case pbParameterType::Enum:
      return Bank::Popup;
    default:
      return Bank::None;
  }
}

Bank bankOfElementType(pbElementType type) {
  switch (baseKind(type)) {
    case BaseKind::Int:
      return Bank::Slider;
    case BaseKind::Float:
      return Bank::Fixed;
    case BaseKind::Bool:
      return Bank::Checkbox;
    case BaseKind::None:
      break;
  }
  return Bank::None;
}

}  // namespace

BankRange bankRange(Bank bank) {
  return kRanges[static_cast<std::size_t>(bank)];
}

ControlNeed controlNeed(const pbParameter& parameter) {
  Bank bank = bankOfControl(parameter.aeUIControl);
  if (bank == Bank::None) bank = bankOfParameterType(parameter.parameterType);
  if (bank != Bank::None) return {bank, 1};
  bank = bankOfElementType(parameter.type);
  return {bank, bank == Bank::None ? 0 : componentCount(parameter.type)};
}

int inputSlot(std::size_t inputIndex) {
  return inputIndex < kLayerInputCount ? static_cast<int>(inputIndex) : -1;
}

std::vector<int> assignParameterSlots(std::span<const pbParameter* const> parameters) {
  std::array<int, kRanges.size()> next{};
  for (std::size_t i = 0; i < kRanges.size(); ++i)
    next[i] = kRanges[i].first;

  std::vector<int> slots;
  slots.reserve(parameters.size());
  for (const pbParameter* parameter : parameters) {
    const ControlNeed need = controlNeed(*parameter);
    int& counter = next[static_cast<std::size_t>(need.bank)];
    const bool fits = need.count > 0 && counter + need.count <= bankRange(need.bank).end;
    slots.push_back(fits ? counter : -1);
    if (fits) counter += need.count;
  }
  return slots;
}

}  // namespace vellumtide
