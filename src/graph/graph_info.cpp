#include "graph/graph_info.h"

namespace vellumtide {

GraphParameterNames::GraphParameterNames(const pbGraphInfo& graph) {
  names_.reserve(graph.parameters.size());
  for (const pbParameter& parameter : graph.parameters) {
    names_.insert(parameter.name);
    names_.insert(parameter.sourceName);
  }
}

KernelsByName::KernelsByName(const pbGraphInfo& graph) {
  kernels_.reserve(graph.kernels.size());
  for (const pbKernelInfo& kernel : graph.kernels)
    kernels_.emplace(kernel.name, &kernel);
}

const pbKernelInfo* KernelsByName::find(std::string_view name) const {
  const auto found = kernels_.find(name);
  return found == kernels_.end() ? nullptr : found->second;
}

}  // namespace vellumtide
