#pragma once

#include <memory>
#include <utility>

#include "graph/graph_info.h"
#include "nodes/node_base.h"
#include "nodes/node_image.h"
#include "nodes/node_program.h"

namespace vellumtide {

// The GL side of a kernel node: the image it draws into and the program it draws with.
class NodeImpl : public aeBase {
 public:
  explicit NodeImpl(std::shared_ptr<NodeProgram> nodeProgram) : program(std::move(nodeProgram)) {}

  NodeImage image;
  std::shared_ptr<NodeProgram> program;
};

// Runs one kernel: draws a quad of the render size into the node's own texture.
class Node : public NodeBase {
 public:
  // A node of a graph file, named by its id. A node whose kernel does not exist gets no input slots
  // and a program of empty texts.
  Node(pbGraph* graph, const pbgNodeInfo& node, NodePrograms& programs);
  // A stand-alone kernel.
  Node(pbGraph* graph, const pbKernelInfo& kernel);

  NodeKind kind() const override { return NodeKind::Kernel; }
  // Does nothing unless the node has been evaluated.
  void readback(const RenderContext& context) override;
  void evaluate(const RenderContext& context) override;
  void reset() override;
  void bindAsInput(GLuint program, const char* uniformName, GLint unit) override;
  PixelSize pixelSize(const RenderContext& context) const override;
  void setFilter(GLint filter) override;
  GLuint textureName() const override { return impl->image.textureName(); }

 private:
  void addInputs(const pbKernelInfo& kernel);
  GLint filterFor(const RenderContext& context) const;
  void prepareProgram(const RenderContext& context);
  void setStandardUniforms(const RenderContext& context);
  void setParameterUniforms();
  void bindInputs(const RenderContext& context);
  void draw(const ImageDesc& output);

  std::unique_ptr<NodeImpl> impl;
  bool programMayRefuse = true;  // GL may answer with errors when the program gets its values
};

}  // namespace vellumtide
