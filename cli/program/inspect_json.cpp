#include "cli/program/inspect.h"
#include "cli/program/value_notes.h"

namespace vellumtide::cli {
namespace {

using Json = nlohmann::ordered_json;

Json variableJson(const pbVariable& variable) {
  return {{"type", typeName(variable.type)}, {"name", variable.name.view()}};
}

Json variablesJson(const std::vector<pbVariable>& variables) {
  Json list = Json::array();
  for (const pbVariable& variable : variables)
    list.push_back(variableJson(variable));
  return list;
}

Json cellsJson(const ValueCells& value, pbElementType type) {
  Json cells = Json::array();
  const BaseKind kind = baseKind(type);
  const int count = kind == BaseKind::None ? 0 : componentCount(type);
  for (int i = 0; i < count; ++i) {
    if (kind == BaseKind::Int) {
      cells.push_back(value.intAt(i));
    } else if (kind == BaseKind::Bool) {
      cells.push_back(value.boolAt(i));
    } else {
      cells.push_back(static_cast<double>(value.floatAt(i)));
    }
  }
  return cells;
}

Json valueJson(const pbValue& value, pbElementType type) {
  return {{"isSet", value.isSet}, {"cells", cellsJson(value.cells, type)}};
}

Json parameterJson(const pbParameter& parameter) {
  const RelativePoint& relative = parameter.aePointRelativeDefaultValue;
  return {{"type", typeName(parameter.type)},
          {"name", parameter.name.view()},
          {"displayName", parameter.displayName.view()},
          {"aeDisplayName", parameter.aeDisplayName.view()},
          {"parameterType", parameterTypeName(parameter.parameterType)},
          {"aeUIControl", uiControlName(parameter.aeUIControl)},
          {"enumValues", parameter.enumValues},
          {"aePopupString", parameter.aePopupString},
          {"defaultValue", valueJson(parameter.defaultValue, parameter.type)},
          {"minValue", valueJson(parameter.minValue, parameter.type)},
          {"maxValue", valueJson(parameter.maxValue, parameter.type)},
          {"aePointRelativeDefaultValue",
           {{"isSet", relative.isSet},
            {"x", static_cast<double>(relative.x)},
            {"y", static_cast<double>(relative.y)}}}};
}

Json parametersJson(const std::vector<pbParameter>& parameters) {
  Json list = Json::array();
  for (const pbParameter& parameter : parameters)
    list.push_back(parameterJson(parameter));
  return list;
}

void addMetadata(Json& object, const pbMetadata& metadata) {
  object["name"] = metadata.name.view();
  object["languageVersion"] = metadata.languageVersion;
  object["namespace"] = metadata.nameSpace.view();
  object["vendor"] = metadata.vendor.view();
  object["version"] = metadata.version;
  object["description"] = metadata.description;
}

void addKernel(Json& object, const pbKernelInfo& kernel) {
  addMetadata(object, kernel);
  object["inputs"] = variablesJson(kernel.inputs);
  object["output"] = variableJson(kernel.output);
  object["dependents"] = variablesJson(kernel.dependents);
  object["parameters"] = parametersJson(kernel.parameters);
  object["body"] = kernel.body;
}

void addGraph(Json& object, const pbGraphInfo& graph) {
  addMetadata(object, graph);
  object["parameters"] = parametersJson(graph.parameters);
  object["inputs"] = variablesJson(graph.inputs);
  object["output"] = variableJson(graph.output);
  object["kernels"] = Json::array();
  for (const pbKernelInfo& kernel : graph.kernels) {
    addKernel(object["kernels"].emplace_back(Json::object()), kernel);
  }
  object["nodes"] = Json::array();
  for (const pbgNodeInfo& node : graph.nodes) {
    object["nodes"].push_back({{"id", node.id.view()},
                               {"name", node.name.view()},
                               {"vendor", node.vendor.view()},
                               {"namespace", node.nameSpace.view()},
                               {"version", node.version},
                               {"clientID", node.clientID.view()},
                               {"evaluateParametersSource", node.evaluateParametersSource},
                               {"evaluateParameters", node.evaluateParameters}});
  }
  object["connections"] = Json::array();
  for (const pbgConnection& connection : graph.connections) {
    object["connections"].push_back({{"from", connection.from.view()},
                                     {"fromOutput", connection.fromOutput.view()},
                                     {"to", connection.to.view()},
                                     {"toInput", connection.toInput.view()},
                                     {"kind", static_cast<int>(connection.kind)}});
  }
}

}  // namespace

Json inspectionJson(const Program& program) {
  Json object = {{"kind", program.kernel() ? "kernel" : "graph"}};
  if (const pbKernelInfo* kernel = program.kernel()) {
    addKernel(object, *kernel);
  } else {
    addGraph(object, *program.graph());
  }
  for (const ValueNote& note : valueNotes(program)) {
    Json& value = object["parameters"][note.parameter][note.key];
    value["meant"] = cellsJson(note.meant, note.type);
    value["line"] = note.place.line;
    value["column"] = note.place.column;
  }
  const ProgramSlots slots = slotsOf(program);
  object["slots"] = {{"inputs", slots.inputs}, {"parameters", slots.parameters}};
  return object;
}

}  // namespace vellumtide::cli
