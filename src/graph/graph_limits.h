// What a graph's nodes ask for together.
#pragma once

#include "graph/graph_info.h"
#include "kernel/limits.h"

namespace vellumtide {

/// The limit that the inputs of all nodes or the shader texts of different nodes go beyond. The
/// graph's kernels and functions must have been read.
Limit limitOfNodes(const pbGraphInfo& info);

}  // namespace vellumtide
