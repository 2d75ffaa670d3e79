#pragma once

#include "nodes/node_base.h"
#include "nodes/node_image.h"

namespace vellumtide {

// Turns one of the host's buffers into a texture of the render size.
class ImageNode : public NodeBase {
 public:
  ImageNode(pbGraph* graph, std::string_view inputName) : NodeBase(graph, inputName) {}

  NodeKind kind() const override { return NodeKind::Image; }
  // Reads the whole texture into a buffer of its size, whose position is not used then; into any
  // other buffer what lies at its position.
  void readback(const RenderContext& context) override;
  void evaluate(const RenderContext& context) override;
  void reset() override;
  void bindAsInput(GLuint program, const char* uniformName, GLint unit) override;
  PixelSize pixelSize(const RenderContext& context) const override;
  void setFilter(GLint filter) override;
  GLuint textureName() const override { return image.textureName(); }

  // Which of the context's input buffers feeds this node, 0 to 3; -1 for none.
  std::int32_t index = -1;

 private:
  bool isFedBy(const ImageDesc& input) const;
  const ImageDesc* findInput(const RenderContext& context) const;

  NodeImage image;
};

}  // namespace vellumtide
