#pragma once

#include <array>
#include <string>

#include "bank/slot_assignment.h"
#include "nodes/pb_graph.h"

namespace vellumtide {

// One control of the bank as a program uses it.
struct PanelControl {
  std::string label;                         // empty: not used, to be hidden
  const pbGraphParameter* record = nullptr;  // null for layer inputs
  int component = 0;                         // of the record's value

  bool isUsed() const { return !label.empty(); }
};

using PanelLayout = std::array<PanelControl, kControlCount>;

// Control 0, the effect's own layer, is never used here. A null program uses nothing.
PanelLayout panelLayout(const pbGraph* program);

}  // namespace vellumtide
