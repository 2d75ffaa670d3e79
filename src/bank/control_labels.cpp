#include "bank/control_labels.h"

#include "aeapi/constants.h"
#include "kernel/cut_text.h"

namespace vellumtide {
namespace {

constexpr int kPopupEntryLimit = 32;

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

std::string controlLabel(const pbParameter& parameter, int component, int count) {
  const std::string suffix = componentSuffix(parameter.type, component, count);
  const std::size_t room = kMaxParamNameLength - suffix.size();
  return std::string(cutText(displayNameOf(parameter), room)) + suffix;
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
