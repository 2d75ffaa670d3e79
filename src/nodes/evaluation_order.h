#pragma once

#include <vector>

namespace vellumtide {

class NodeBase;

struct EvaluationOrder {
  std::vector<NodeBase*> nodes;  // every node after all of its sources
  bool cyclic = false;           // some node is its own source; `nodes` is incomplete then
};

// The nodes that `output` needs, itself included: depth-first, sources in slot order. Time is
// linear in nodes and connections, and the stack does not grow with the graph.
EvaluationOrder evaluationOrder(NodeBase& output);

}  // namespace vellumtide
