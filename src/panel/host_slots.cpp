#include "panel/host_slots.h"

#include <vector>

#include "bank/slot_assignment.h"

namespace vellumtide {

void assignHostSlots(pbGraph& program) {
  std::size_t inputIndex = 0;
  for (const auto& node : program.nodes) {
    if (node->kind() != NodeKind::Image) continue;
    static_cast<ImageNode&>(*node).index = inputSlot(inputIndex++);
  }

  std::vector<const pbParameter*> parameters;
  parameters.reserve(program.parameters.size());
  for (const auto& record : program.parameters)
    parameters.push_back(&record->parameter);
  const std::vector<int> slots = assignParameterSlots(parameters);
  for (std::size_t i = 0; i < slots.size(); ++i)
    program.parameters[i]->slot = slots[i];
}

void takeMeantDefaults(pbGraph& program) {
  for (const auto& record : program.parameters) {
    const pbValue& value = record->parameter.defaultValue;
    if (value.isSet) record->value = value.meantCells();
  }
}

}  // namespace vellumtide
