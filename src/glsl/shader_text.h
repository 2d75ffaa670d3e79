#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "glsl/channel_order.h"
#include "kernel/kernel_info.h"

namespace vellumtide {

/// What a kernel needs beside itself when it runs as a node of a graph.
struct NodeShaderInputs {
  std::span<const pbParameter> graphParameters;
  /// The rewritten function; empty when the node has none.
  std::string_view evaluateParameters;
};

/// Where a generated text holds the program's own texts, in bytes from its begin.
struct OwnTextPlaces {
  std::size_t body = 0;
  std::size_t evaluateParameters = 0;
};

struct ShaderTextPlaces {
  OwnTextPlaces vertex;
  OwnTextPlaces fragment;
};

/// The vertex and fragment shader of a kernel, in the dialect without a version line. Nothing is
/// checked: a faulty body gives texts that do not compile. An order outside 0 to 23 writes no
/// swizzles. `node` is null for a stand-alone kernel, whose parameters then are uniforms. `places`
/// learns where the kernel's and the node's texts went. Returns 0.
int generateShaders(const pbKernelInfo& kernel, const NodeShaderInputs* node,
                    ChannelOrder channelOrder, std::string& vertexText, std::string& fragmentText,
                    ShaderTextPlaces* places = nullptr);

/// The texts of a kernel that runs by itself. Returns 0.
int generateKernelShaders(const pbKernelInfo& kernel, ChannelOrder channelOrder,
                          std::string& vertexText, std::string& fragmentText,
                          ShaderTextPlaces* places = nullptr);

}  // namespace vellumtide
