#include "panel/panel_layout.h"

#include "bank/control_labels.h"
#include "kernel/cut_text.h"

namespace vellumtide {
namespace {

// A used control is never without a label.
std::string labelOr(std::string label, const char* fallback) {
  return label.empty() ? fallback : std::move(label);
}

}  // namespace

PanelLayout panelLayout(const pbGraph* program) {
  PanelLayout layout;
  if (!program) return layout;
  for (const auto& node : program->nodes) {
    if (node->kind() != NodeKind::Image) continue;
    const int slot = static_cast<const ImageNode&>(*node).index;
    if (slot <= 0) continue;
    layout[static_cast<std::size_t>(slot)].label =
        labelOr(std::string(cutText(node->name.view(), kMaxParamNameLength)), "layer2");
  }
  for (const auto& record : program->parameters) {
    if (record->slot < 0) continue;
    const int count = controlNeed(record->parameter).count;
    for (int component = 0; component < count; ++component) {
      PanelControl& control = layout[static_cast<std::size_t>(record->slot + component)];
      control.label = labelOr(controlLabel(record->parameter, component, count), "-");
      control.record = record.get();
      control.component = component;
    }
  }
  return layout;
}

}  // namespace vellumtide
