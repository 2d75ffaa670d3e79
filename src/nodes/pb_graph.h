#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/ae_base.h"
#include "graph/graph_info.h"
#include "nodes/graph_parameter.h"
#include "nodes/image_node.h"
#include "nodes/node_base.h"
#include "nodes/node_image.h"

namespace vellumtide {

// An executable program: a graph file's nodes, or one kernel as a graph of one node. Construction,
// evaluation and destruction need the device to be current.
class pbGraph : public aeBase {
 public:
  pbGraph(const pbGraphInfo& info, std::int32_t order);
  pbGraph(const pbKernelInfo& kernel, std::int32_t order);
  ~pbGraph() override;

  // The output node exists and nothing upstream of it depends on itself.
  bool isUsable() const;
  NodeBase* outputNode() const { return nodes[static_cast<std::size_t>(outputIndex)].get(); }

  // Evaluates every node that the output node needs, each after its sources, in depth-first order
  // with inputs in declaration order. The graph must be usable.
  void evaluate(const RenderContext& context);
  void reset();

  // The first GL error since evaluate began, 0 when there was none. Errors that a program answers
  // to its values with do not count.
  unsigned glError();
  // Keeps a pending GL error for glError.
  void noteGLError();

  int inputCount() const;                                    // image nodes
  ImageNode* input(int n) const;                             // the n-th image node, or null
  std::size_t indexOfNode(std::string_view nodeName) const;  // node count when there is none
  NodeBase* findNode(std::string_view nodeName) const;

  // Stands in for an input that nothing is connected to: one transparent black texel.
  void bindBlankInput(GLuint program, const char* uniformName, GLint unit);

  std::string name;
  std::string description;
  bool cyclic = false;
  std::int32_t outputIndex = -1;
  std::vector<std::unique_ptr<NodeBase>> nodes;
  std::int32_t channelOrder;
  std::vector<std::unique_ptr<pbGraphParameter>> parameters;

 private:
  void connect(const pbGraphInfo& info);
  // Says once on the debug channel which inputs nothing is connected to, and makes the blank image
  // that stands in for them.
  void fillUnconnectedInputs();

  std::unique_ptr<NodeImage> blank_;
  unsigned glError_ = 0;
};

}  // namespace vellumtide
