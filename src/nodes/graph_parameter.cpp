#include "nodes/graph_parameter.h"

#include <utility>

#include "glsl/names.h"

namespace vellumtide {

pbGraphParameter::pbGraphParameter(const pbParameter& description, std::string uniform)
    : parameter(description), uniformName(std::move(uniform)) {
  if (description.defaultValue.isSet) value = description.defaultValue.cells;
}

std::unique_ptr<pbGraphParameter> makeKernelParameter(const pbParameter& description) {
  return std::unique_ptr<pbGraphParameter>(
      newOrThrow<pbGraphParameter>(description, description.sourceName));
}

std::unique_ptr<pbGraphParameter> makeGraphParameter(const pbParameter& description) {
  std::unique_ptr<pbGraphParameter> record(
      newOrThrow<pbGraphParameter>(description, graphParameterName(description.name)));
  pbParameter& parameter = record->parameter;
  if (parameter.displayName.empty() && parameter.aeDisplayName.empty()) {
    parameter.displayName = parameter.name;
  }
  parameter.name = record->uniformName;
  return record;
}

}  // namespace vellumtide
