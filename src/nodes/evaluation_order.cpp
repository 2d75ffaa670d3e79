#include "nodes/evaluation_order.h"

#include <cstddef>
#include <unordered_map>

#include "nodes/node_base.h"

namespace vellumtide {
namespace {

enum class Mark { OnPath, Done };

struct Step {
  NodeBase* node;
  std::size_t nextSlot;
};

}  // namespace

EvaluationOrder evaluationOrder(NodeBase& output) {
  EvaluationOrder order;
  std::unordered_map<const NodeBase*, Mark> marks;
  std::vector<Step> path{{&output, 0}};
  marks[&output] = Mark::OnPath;
  while (!path.empty()) {
    Step& step = path.back();
    if (step.nextSlot == step.node->inputs.size()) {
      marks[step.node] = Mark::Done;
      order.nodes.push_back(step.node);
      path.pop_back();
      continue;
    }
    NodeBase* source = step.node->inputs[step.nextSlot++].source;
    if (!source) continue;
    const auto [mark, isNew] = marks.try_emplace(source, Mark::OnPath);
    if (isNew) {
      path.push_back({source, 0});
    } else if (mark->second == Mark::OnPath) {
      order.cyclic = true;
      return order;
    }
  }
  return order;
}

}  // namespace vellumtide
