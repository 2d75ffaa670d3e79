// The parts of an executable graph: image nodes, which hold a host buffer, and kernel nodes, which
// draw. Every operation needs the device to be current.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/ae_base.h"
#include "gl/gl_headers.h"
#include "kernel/fixed_text.h"
#include "nodes/render_context.h"

namespace vellumtide {

class NodeBase;
class pbGraph;

// Where a node takes an input image from, named after the kernel's input.
struct InputSlot {
  explicit InputSlot(const std::string& inputName) : name(inputName), uniformName(inputName) {}

  NodeBase* source = nullptr;  // not owned; null while nothing is connected
  FixedText<64> name;
  std::string uniformName;  // of the sampler: the input's name, uncut
};

struct PixelSize {
  float x = 1.0f;
  float y = 1.0f;
};

enum class NodeKind { Image = 0, Kernel = 1 };

class NodeBase : public aeBase {
 public:
  virtual NodeKind kind() const = 0;
  // Copies the node's image into the buffer of context.output.
  virtual void readback(const RenderContext& context) = 0;
  // Brings the node's image up to date, once until the next reset.
  virtual void evaluate(const RenderContext& context) = 0;
  // Marks the node as not evaluated and shrinks its texture to one texel.
  virtual void reset() = 0;
  // Binds the node's image to a texture unit of the program that is in use.
  virtual void bindAsInput(GLuint program, const char* uniformName, GLint unit) = 0;
  virtual PixelSize pixelSize(const RenderContext& context) const = 0;
  virtual GLuint textureName() const = 0;
  // How reads of this node's image between texels are answered: GL_LINEAR or GL_NEAREST.
  virtual void setFilter(GLint filter) = 0;

  NameText name;
  pbGraph* owner = nullptr;
  std::vector<InputSlot> inputs;
  bool evaluated = false;
  // When set, the node counts as evaluated and answers bindAsInput and pixelSize with this one's.
  NodeBase* proxy = nullptr;

 protected:
  NodeBase(pbGraph* graph, std::string_view nodeName) : name(nodeName), owner(graph) {}

  // True when there is nothing left to do for this frame.
  bool isUpToDate() {
    if (proxy) evaluated = true;
    return evaluated;
  }
};

}  // namespace vellumtide
