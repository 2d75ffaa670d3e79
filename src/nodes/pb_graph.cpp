#include "nodes/pb_graph.h"

#include <string_view>
#include <unordered_map>

#include "core/message_channels.h"
#include "gl/gl_loader.h"
#include "kernel/cut_text.h"
#include "nodes/evaluation_order.h"
#include "nodes/gl_error.h"
#include "nodes/node.h"

namespace vellumtide {
namespace {

// A name as it is shown: its record may end within a character.
std::string shownName(const NameText& text) {
  return std::string(cutText(text, NameText::kCapacity));
}

std::string describe(std::string_view what, const pbMetadata& metadata) {
  const auto orDash = [](const NameText& text) { return text.empty() ? "-" : shownName(text); };
  return std::string(what) + " : " + orDash(metadata.name) +
         "\nversion : " + std::to_string(metadata.version) +
         "\nVendor : " + orDash(metadata.vendor) + "\n\n" + metadata.description;
}

// First node of each name.
std::unordered_map<std::string_view, std::size_t> indexByName(
    const std::vector<std::unique_ptr<NodeBase>>& nodes) {
  std::unordered_map<std::string_view, std::size_t> index;
  for (std::size_t i = 0; i < nodes.size(); ++i)
    index.try_emplace(nodes[i]->name.view(), i);
  return index;
}

// Finds a node's input slots by the name that a connection or an image has: by the whole name,
// else by what a record keeps of it; the first of a name wins. Kept per node, because a hostile
// kernel may have as many inputs as its graph has connections.
class SlotFinder {
 public:
  InputSlot* find(NodeBase& node, std::string_view inputName) {
    auto [entry, isNew] = byNode_.try_emplace(&node);
    Slots& slots = entry->second;
    if (isNew) {
      for (InputSlot& slot : node.inputs) {
        slots.byName.try_emplace(slot.uniformName, &slot);
        slots.byRecord.try_emplace(recorded(slot.uniformName), &slot);
      }
    }
    const auto found = slots.byName.find(inputName);
    if (found != slots.byName.end()) return found->second;
    const auto similar = slots.byRecord.find(recorded(inputName));
    return similar == slots.byRecord.end() ? nullptr : similar->second;
  }

 private:
  using ByText = std::unordered_map<std::string_view, InputSlot*>;
  struct Slots {
    ByText byName;
    ByText byRecord;
  };

  static std::string_view recorded(std::string_view text) {
    return text.substr(0, NameText::kCapacity);
  }

  std::unordered_map<NodeBase*, Slots> byNode_;
};

}  // namespace

pbGraph::pbGraph(const pbGraphInfo& info, std::int32_t order)
    : name(shownName(info.name)), channelOrder(order) {
  parameters.reserve(info.parameters.size());
  for (const pbParameter& parameter : info.parameters) {
    parameters.push_back(makeGraphParameter(parameter));
  }
  nodes.reserve(info.inputs.size() + info.nodes.size());
  for (const pbVariable& image : info.inputs) {
    nodes.emplace_back(newOrThrow<ImageNode>(this, image.name.view()));
  }
  NodePrograms programs(info, order);
  for (const pbgNodeInfo& node : info.nodes) {
    nodes.emplace_back(newOrThrow<Node>(this, node, programs));
  }
  connect(info);
  if (outputIndex == -1) sendMessage(Channel::Debug, "No output node.\n" + name + "\n");
  if (outputIndex >= 0 && static_cast<std::size_t>(outputIndex) < nodes.size()) {
    cyclic = evaluationOrder(*outputNode()).cyclic;
  }
  if (cyclic) sendMessage(Channel::Debug, "Cyclick Dependency detected.\n" + name + "\n");
  fillUnconnectedInputs();
  description = describe("Pixel Bender Graph", info);
}

pbGraph::pbGraph(const pbKernelInfo& kernel, std::int32_t order)
    : name(shownName(kernel.name)), channelOrder(order) {
  parameters.reserve(kernel.parameters.size());
  for (const pbParameter& parameter : kernel.parameters) {
    parameters.push_back(makeKernelParameter(parameter));
  }
  nodes.reserve(1 + kernel.inputs.size());
  nodes.emplace_back(newOrThrow<Node>(this, kernel));
  outputIndex = 0;
  NodeBase& node = *nodes.front();
  SlotFinder slots;
  for (const pbVariable& input : kernel.inputs) {
    nodes.emplace_back(newOrThrow<ImageNode>(this, input.name.view()));
    if (InputSlot* slot = slots.find(node, input.sourceName)) slot->source = nodes.back().get();
  }
  fillUnconnectedInputs();
  description = describe("Pixel Bender Kernel", kernel);
}

pbGraph::~pbGraph() {
  nodes.clear();
  parameters.clear();
}

void pbGraph::connect(const pbGraphInfo& info) {
  const auto index = indexByName(nodes);
  const auto indexOf = [&](const NameText& nodeName) {
    const auto found = index.find(nodeName.view());
    return found == index.end() ? nodes.size() : found->second;
  };
  SlotFinder slots;
  for (const pbgConnection& connection : info.connections) {
    const std::size_t source = indexOf(connection.from);
    if (connection.kind == ConnectionKind::ToOutput) {
      outputIndex = static_cast<std::int32_t>(source);
      continue;
    }
    if (connection.kind == ConnectionKind::None) continue;
    const std::size_t target = indexOf(connection.to);
    if (source == nodes.size() || target == nodes.size()) continue;
    if (InputSlot* slot = slots.find(*nodes[target], connection.fullToInput)) {
      slot->source = nodes[source].get();
    }
  }
}

void pbGraph::fillUnconnectedInputs() {
  std::string first;
  std::size_t count = 0;
  for (const auto& node : nodes) {
    for (const InputSlot& slot : node->inputs) {
      if (!slot.source && count++ == 0) first = slot.name.str() + " of node " + node->name.str();
    }
  }
  if (count == 0) return;
  if (glAvailable()) {
    blank_ = std::make_unique<NodeImage>();
    blank_->clearToTransparent();
  }
  std::string text = "Unconnected input: " + first;
  if (count > 1) text += " (and " + std::to_string(count - 1) + " more)";
  sendMessage(Channel::Debug, text + "\n" + name + "\n");
}

bool pbGraph::isUsable() const {
  return outputIndex >= 0 && static_cast<std::size_t>(outputIndex) < nodes.size() && outputNode() &&
         !cyclic;
}

void pbGraph::evaluate(const RenderContext& context) {
  // What building or an earlier frame has left does not count.
  discardGLErrors();
  glError_ = 0;
  // Each node finds its sources evaluated, so the stack stays flat however deep the graph is.
  for (NodeBase* node : evaluationOrder(*outputNode()).nodes)
    node->evaluate(context);
}

void pbGraph::reset() {
  for (const auto& node : nodes)
    node->reset();
}

unsigned pbGraph::glError() {
  noteGLError();
  return glError_;
}

void pbGraph::noteGLError() {
  if (glError_ == 0) glError_ = sendGLError();
}

int pbGraph::inputCount() const {
  int count = 0;
  for (const auto& node : nodes)
    count += node->kind() == NodeKind::Image ? 1 : 0;
  return count;
}

ImageNode* pbGraph::input(int n) const {
  if (n < 0) return nullptr;
  for (const auto& node : nodes) {
    if (node->kind() == NodeKind::Image && n-- == 0) return static_cast<ImageNode*>(node.get());
  }
  return nullptr;
}

std::size_t pbGraph::indexOfNode(std::string_view nodeName) const {
  std::size_t i = 0;
  while (i < nodes.size() && !(nodes[i]->name == nodeName))
    ++i;
  return i;
}

NodeBase* pbGraph::findNode(std::string_view nodeName) const {
  const std::size_t i = indexOfNode(nodeName);
  return i < nodes.size() ? nodes[i].get() : nullptr;
}

void pbGraph::bindBlankInput(GLuint program, const char* uniformName, GLint unit) {
  if (blank_) blank_->bindToSampler(program, uniformName, unit);
}

}  // namespace vellumtide
