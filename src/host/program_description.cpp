#include "host/program_description.h"

#include "nodes/pb_graph.h"
#include "services/debug_output.h"

namespace vellumtide {

void describeProgram(const pbGraph& program) {
  _printf("%s\n", program.description.c_str());
  for (const auto& record : program.parameters) {
    const pbParameter& parameter = record->parameter;
    _printf("parameter %s %s : control %d\n", typeName(parameter.type).data(),
            parameter.name.c_str(), static_cast<int>(record->slot));
  }
  for (const auto& node : program.nodes) {
    const bool isImage = node->kind() == NodeKind::Image;
    _printf("node %s : %s, %d inputs\n", node->name.c_str(), isImage ? "image" : "kernel",
            static_cast<int>(node->inputs.size()));
  }
}

}  // namespace vellumtide
