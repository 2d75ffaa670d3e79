#include "kernel/parameter_kind.h"

#include <array>
#include <cstddef>

namespace vellumtide {
namespace {

constexpr std::array<std::string_view, kParameterTypeCount> kParameterTypes{
    "",         "angleDegrees", "angleRadians", "percentage", "time", "inputSize", "position",
    "colorLAB", "colorRGB",     "colorCMYK",    "colorRGBA",  "enum", "frame",     "time"};

constexpr std::array<std::string_view, kUIControlCount> kUIControls{
    "", "aePopup", "aeAngle", "aePercentSlider", "aeOneChannelColor", "aePoint", "aeColor"};

template <std::size_t N>
std::string_view keywordAt(const std::array<std::string_view, N>& keywords, std::size_t code) {
  return keywords[code < N ? code : 0];
}

/// The first code with that keyword, 0 when there is none.
template <std::size_t N>
std::size_t codeOf(const std::array<std::string_view, N>& keywords, std::string_view text) {
  for (std::size_t code = 0; code < N; ++code) {
    if (keywords[code] == text) return code;
  }
  return 0;
}

}  // namespace

std::string_view parameterTypeName(pbParameterType type) {
  return keywordAt(kParameterTypes, static_cast<std::size_t>(type));
}

std::string_view uiControlName(pbUIControl control) {
  return keywordAt(kUIControls, static_cast<std::size_t>(control));
}

pbParameterType parameterTypeFromName(std::string_view text, bool integerTime) {
  const auto type = static_cast<pbParameterType>(codeOf(kParameterTypes, text));
  return type == pbParameterType::Time && integerTime ? pbParameterType::IntegerTime : type;
}

pbUIControl uiControlFromName(std::string_view text) {
  return static_cast<pbUIControl>(codeOf(kUIControls, text));
}

}  // namespace vellumtide
