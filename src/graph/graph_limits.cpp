#include "graph/graph_limits.h"

#include <set>
#include <utility>

namespace vellumtide {
namespace {

// About what the generated parts of the two texts of a node take.
constexpr std::size_t kGeneratedBytes = 4096;

std::size_t parameterTextBytes(const pbGraphInfo& info) {
  std::size_t bytes = 0;
  for (const pbParameter& parameter : info.parameters)
    bytes += 24 + parameter.name.view().size();
  return bytes;
}

}  // namespace

Limit limitOfNodes(const pbGraphInfo& info) {
  const KernelsByName kernels(info);
  const std::size_t sharedBytes = kGeneratedBytes + parameterTextBytes(info);
  std::size_t inputs = 0;
  std::size_t shaderBytes = 0;
  std::set<std::pair<const pbKernelInfo*, std::string_view>> different;
  for (const pbgNodeInfo& node : info.nodes) {
    const pbKernelInfo* kernel = kernels.find(node.name);
    if (!kernel) continue;
    inputs += kernel->inputs.size();
    if (inputs > limits::kGraphInputs) return Limit::GraphInputs;
    if (!different.emplace(kernel, node.evaluateParameters).second) continue;
    shaderBytes += 2 * (kernel->body.size() + node.evaluateParameters.size() + sharedBytes);
    // A single kernel may be as long as a text may be.
    if (different.size() > 1 && shaderBytes > limits::kShaderBytes) return Limit::ShaderBytes;
  }
  return Limit::None;
}

}  // namespace vellumtide
