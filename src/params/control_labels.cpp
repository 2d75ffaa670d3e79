#include "params/control_labels.h"

#include "aeapi/constants.h"

namespace vellumtide {
namespace {

constexpr int kPopupEntryLimit = 32;

bool isContinuationByte(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

std::string_view displayNameOf(const pbParameter& parameter) {
  if (!parameter.aeDisplayName.empty()) return parameter.aeDisplayName;
  if (!parameter.displayName.empty()) return parameter.displayName;
  return parameter.name;
}

int matrixRows(pbElementType type) {
  if (type == pbElementType::Float2x2) return 2;
  if (type == pbElementType::Float3x3) return 3;
  return type == pbElementType::Float4x4 ? 4 : 0;
}

std::string componentSuffix(pbElementType type, int component, int count) {
  if (count <= 1) return {};
  if (const int rows = matrixRows(type)) {
    return " [" + std::to_string(component / rows) + "][" + std::to_string(component % rows) + "]";
  }
  return {' ', "xyzw"[component]};
}

}  // namespace

std::string cutText(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return std::string(text);
  std::size_t end = limit;
  while (end > 0 && isContinuationByte(text[end]))
    --end;
  return std::string(text.substr(0, end));
}

std::string controlLabel(const pbParameter& parameter, int component, int count) {
  const std::string suffix = componentSuffix(parameter.type, component, count);
  return cutText(displayNameOf(parameter), kMaxParamNameLength - suffix.size()) + suffix;
}

std::string popupEntries(const pbParameter& parameter) {
  std::string entries =
      parameter.aePopupString.empty() ? parameter.enumValues : parameter.aePopupString;
  int count = 1;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (entries[i] == '|' && count++ == kPopupEntryLimit) {
      entries.resize(i);
      break;
    }
  }
  return entries;
}

}  // namespace vellumtide
