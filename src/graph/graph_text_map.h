// Where the kernels and functions of a graph stand in its file.
#pragma once

#include <vector>

#include "kernel/source_map.h"

namespace vellumtide {

/// For each kernel's source and each node's function, by their indices in the graph, the places of
/// its characters in the file's text. References count as replaced.
struct GraphTextMaps {
  std::vector<SourceMap> kernelSources;
  std::vector<SourceMap> functionSources;
};

/// The maps of a text that readGraphText reads; empty when it cannot be made a tree.
GraphTextMaps mapGraphTexts(const char* text);

}  // namespace vellumtide
