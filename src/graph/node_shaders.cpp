#include "graph/node_shaders.h"

namespace vellumtide {
namespace {

int generateFor(const pbGraphInfo& graph, const pbKernelInfo* kernel, std::size_t nodeIndex,
                std::string& vertexText, std::string& fragmentText, ChannelOrder channelOrder,
                ShaderTextPlaces* places) {
  if (!kernel) return -1;
  const NodeShaderInputs inputs{graph.parameters, graph.nodes[nodeIndex].evaluateParameters};
  return generateShaders(*kernel, &inputs, channelOrder, vertexText, fragmentText, places);
}

}  // namespace

int generateNodeShaders(const pbGraphInfo& graph, std::size_t nodeIndex, std::string& vertexText,
                        std::string& fragmentText, ChannelOrder channelOrder) {
  const pbKernelInfo* found = nullptr;
  for (const pbKernelInfo& kernel : graph.kernels) {
    if (!found && kernel.name == graph.nodes[nodeIndex].name) found = &kernel;
  }
  return generateFor(graph, found, nodeIndex, vertexText, fragmentText, channelOrder, nullptr);
}

int generateNodeShaders(const pbGraphInfo& graph, const KernelsByName& kernels,
                        std::size_t nodeIndex, std::string& vertexText, std::string& fragmentText,
                        ChannelOrder channelOrder, ShaderTextPlaces* places) {
  return generateFor(graph, kernels.find(graph.nodes[nodeIndex].name), nodeIndex, vertexText,
                     fragmentText, channelOrder, places);
}

}  // namespace vellumtide
