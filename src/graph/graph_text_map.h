// Where the kernels, the functions and the parameters' values of a graph stand in its file.
#pragma once

#include <cstddef>
#include <vector>

#include "kernel/source_map.h"

namespace vellumtide {

/// Where the texts of a parameter's values begin, in bytes; 0 for those that are not there.
struct GraphValuePlaces {
  std::size_t defaultValue = 0;
  std::size_t minValue = 0;
  std::size_t maxValue = 0;
  std::size_t relativeDefault = 0;
};

/// For each kernel's source and each node's function, by their indices in the graph, the places of
/// its characters in the file's text. References count as replaced.
struct GraphTextMaps {
  std::vector<SourceMap> kernelSources;
  std::vector<SourceMap> functionSources;
  std::vector<GraphValuePlaces> parameterValues;  ///< by the parameters' indices
};

/// The maps of a text that readGraphText reads; empty when it cannot be made a tree.
GraphTextMaps mapGraphTexts(const char* text);

}  // namespace vellumtide
