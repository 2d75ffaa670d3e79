#include "tests/scenarios/plan.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

#include "bank/slot_assignment.h"
#include "glsl/names.h"
#include "glsl/shader_text.h"
#include "graph/graph_reader.h"
#include "graph/node_shaders.h"
#include "kernel/pbk_parser.h"

namespace vellumtide::scenarios {
namespace {

constexpr int kHostOrder = 18;

std::vector<PlanSlot> slotsOf(const pbKernelInfo& kernel) {
  std::vector<PlanSlot> slots;
  for (const pbVariable& input : kernel.inputs)
    slots.push_back({input.name.str(), -1});
  return slots;
}

// The first slot of a name gets the source.
void connect(PlanNode& node, const std::string& input, int source) {
  const auto slot = std::find_if(node.slots.begin(), node.slots.end(),
                                 [&](const PlanSlot& each) { return each.name == input; });
  if (slot != node.slots.end()) slot->source = source;
}

// False when a node depends on itself.
bool arrange(Plan& plan) {
  enum class State { Unseen, Open, Done };
  std::vector<State> states(plan.nodes.size(), State::Unseen);
  std::vector<int> depths(plan.nodes.size(), 0);
  const std::function<bool(int)> visit = [&](int index) {
    const auto at = static_cast<std::size_t>(index);
    if (states[at] != State::Unseen) return states[at] == State::Done;
    states[at] = State::Open;
    for (const PlanSlot& slot : plan.nodes[at].slots) {
      if (slot.source < 0) continue;
      if (!visit(slot.source)) return false;
      depths[at] = std::max(depths[at], depths[static_cast<std::size_t>(slot.source)]);
    }
    if (plan.nodes[at].image < 0) ++depths[at];
    states[at] = State::Done;
    plan.order.push_back(index);
    return true;
  };
  if (plan.output < 0 || !visit(plan.output)) return false;
  plan.depth = depths[static_cast<std::size_t>(plan.output)];
  return true;
}

Plan kernelPlan(const std::string& text) {
  pbKernelInfo kernel;
  PBKParser(text).parse(kernel);
  Plan plan;
  PlanNode node;
  node.name = kernel.name.str();
  node.slots = slotsOf(kernel);
  node.source = text;
  generateKernelShaders(kernel, kHostOrder, node.vertex, node.fragment);
  plan.nodes.push_back(node);
  plan.output = 0;
  for (std::size_t i = 0; i < kernel.inputs.size(); ++i) {
    PlanNode image;
    image.image = static_cast<int>(i);
    image.name = kernel.inputs[i].name.str();
    plan.nodes.push_back(image);
    connect(plan.nodes[0], image.name, static_cast<int>(i) + 1);
  }
  for (const pbParameter& parameter : kernel.parameters)
    plan.parameters.push_back({parameter, parameter.sourceName, -1});
  arrange(plan);
  return plan;
}

Plan graphPlan(const std::string& text) {
  Plan plan;
  pbGraphInfo graph;
  if (readGraphText(text.c_str(), graph) != 0) return plan;
  for (const pbVariable& input : graph.inputs) {
    PlanNode image;
    image.image = static_cast<int>(plan.nodes.size());
    image.name = input.name.str();
    plan.nodes.push_back(image);
  }
  const KernelsByName kernels(graph);
  for (const pbgNodeInfo& each : graph.nodes) {
    PlanNode node;
    node.name = each.id.str();
    if (const pbKernelInfo* kernel = kernels.find(each.name)) node.slots = slotsOf(*kernel);
    plan.nodes.push_back(std::move(node));
  }
  std::unordered_map<std::string, int> byName;
  for (std::size_t i = 0; i < plan.nodes.size(); ++i)
    byName.try_emplace(plan.nodes[i].name, static_cast<int>(i));
  const auto find = [&](const NameText& name) {
    const auto found = byName.find(name.str());
    return found == byName.end() ? -1 : found->second;
  };
  for (const pbgConnection& connection : graph.connections) {
    const int source = find(connection.from);
    if (connection.kind == ConnectionKind::ToOutput) {
      plan.output = source;
      continue;
    }
    const int target = find(connection.to);
    if (source >= 0 && target >= 0) {
      connect(plan.nodes[static_cast<std::size_t>(target)], connection.toInput.str(), source);
    }
  }
  for (const pbParameter& parameter : graph.parameters)
    plan.parameters.push_back({parameter, graphParameterName(parameter.name), -1});
  if (!arrange(plan)) return {};
  // Texts of what is drawn only: thousands of nodes may have long ones.
  for (const int index : plan.order) {
    const std::size_t i = static_cast<std::size_t>(index) - graph.inputs.size();
    PlanNode& node = plan.nodes[static_cast<std::size_t>(index)];
    const pbKernelInfo* kernel = node.image < 0 ? kernels.find(graph.nodes[i].name) : nullptr;
    if (!kernel) continue;
    node.source = graph.kernelSources[static_cast<std::size_t>(kernel - graph.kernels.data())];
    generateNodeShaders(graph, kernels, i, node.vertex, node.fragment, kHostOrder);
  }
  return plan;
}

void assignSlots(Plan& plan) {
  std::vector<const pbParameter*> parameters;
  for (const PlanParameter& each : plan.parameters)
    parameters.push_back(&each.parameter);
  const std::vector<int> slots = assignParameterSlots(parameters);
  for (std::size_t i = 0; i < slots.size(); ++i)
    plan.parameters[i].slot = slots[i];
}

}  // namespace

std::optional<Plan> planOf(const std::string& path, const std::string& text) {
  const char last = path.empty() ? '\0' : path.back();
  const bool isGraph = last == 'g' || last == 'G';
  if (!isGraph && last != 'k') return std::nullopt;
  Plan plan = isGraph ? graphPlan(text) : kernelPlan(text);
  if (plan.order.empty()) return std::nullopt;
  assignSlots(plan);
  return plan;
}

}  // namespace vellumtide::scenarios
