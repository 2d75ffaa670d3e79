#pragma once

#include <cstddef>
#include <string>

#include "glsl/channel_order.h"
#include "glsl/shader_text.h"
#include "graph/graph_info.h"

namespace vellumtide {

/// The shader texts of node `nodeIndex`, which must exist. Returns 0, or -1 with both texts
/// untouched when no kernel of the graph has the node's kernel name.
int generateNodeShaders(const pbGraphInfo& graph, std::size_t nodeIndex, std::string& vertexText,
                        std::string& fragmentText, ChannelOrder channelOrder);

/// The same for many nodes of one graph. `places` learns where the texts of kernel and node went.
int generateNodeShaders(const pbGraphInfo& graph, const KernelsByName& kernels,
                        std::size_t nodeIndex, std::string& vertexText, std::string& fragmentText,
                        ChannelOrder channelOrder, ShaderTextPlaces* places = nullptr);

}  // namespace vellumtide
