#pragma once

#include <cstdint>
#include <string_view>

namespace vellumtide {

/// What a parameter means, from its `parameterType` metadata. The numbers are stored: never
/// reorder.
enum class pbParameterType : std::int32_t {
  None,
  AngleDegrees,
  AngleRadians,
  Percentage,
  Time,
  InputSize,
  Position,
  ColorLAB,
  ColorRGB,
  ColorCMYK,
  ColorRGBA,
  Enum,
  Frame,
  IntegerTime,
};

inline constexpr int kParameterTypeCount = 14;

/// The control a parameter asks for, from its `aeUIControl` metadata. The numbers are stored.
enum class pbUIControl : std::int32_t {
  None,
  Popup,
  Angle,
  PercentSlider,
  OneChannelColor,
  Point,
  Color,
};

inline constexpr int kUIControlCount = 7;

/// The keyword; empty for None and for numbers outside the vocabulary. Time and IntegerTime share
/// the keyword "time".
std::string_view parameterTypeName(pbParameterType type);
std::string_view uiControlName(pbUIControl control);

/// The first entry whose keyword is exactly `text`, else None. "time" is Time, or IntegerTime when
/// `integerTime` is set.
pbParameterType parameterTypeFromName(std::string_view text, bool integerTime);
pbUIControl uiControlFromName(std::string_view text);

}  // namespace vellumtide
