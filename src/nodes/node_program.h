// The GLSL program of a kernel node with the places of the uniforms that every frame sets.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "gl/gl_headers.h"
#include "glsl/sampling.h"
#include "glsl/shader_text.h"
#include "graph/graph_info.h"
#include "nodes/graph_parameter.h"

namespace vellumtide {

// Nodes with the same kernel and function share one. The program object is kept even after a
// failure: drawing with it does whatever GL does with an unlinked program.
class NodeProgram {
 public:
  // Builds from the two texts. What goes wrong is sent, under the label, to the message channels
  // and printed to standard output with the text.
  NodeProgram(const std::string& label, const std::string& vertexText,
              const std::string& fragmentText);
  ~NodeProgram();
  NodeProgram(const NodeProgram&) = delete;
  NodeProgram& operator=(const NodeProgram&) = delete;

  GLuint id() const { return program_; }

  GLint outputPixelSize = -1;
  GLint texturePixelSize = -1;
  GLint compSize = -1;
  GLint downsamplingRate = -1;
  Sampling sampling = Sampling::Anywhere;

  // Places of the graph's parameters, in their order; looked up once.
  const std::vector<GLint>& parameterLocations(
      const std::vector<std::unique_ptr<pbGraphParameter>>& parameters);

 private:
  struct Stage {
    GLenum kind;
    const char* failure;  // "... shader failed to compile"
    const char* banner;   // above the text on standard output
    const char* mark;     // in the error log
  };

  void compile(const Stage& stage, const std::string& label, const std::string& text);

  GLuint program_ = 0;
  bool located_ = false;
  std::vector<GLint> parameterLocations_;
};

// Builds the program of a kernel, stand-alone without a `node`. Without a kernel it has no texts.
std::shared_ptr<NodeProgram> buildNodeProgram(const std::string& label, const pbKernelInfo* kernel,
                                              const NodeShaderInputs* node,
                                              ChannelOrder channelOrder);

// The programs of one graph while it is built, each of them built once. The graph's description
// must outlive it.
class NodePrograms {
 public:
  NodePrograms(const pbGraphInfo& info, ChannelOrder channelOrder)
      : info_(info), channelOrder_(channelOrder), kernels_(info) {}

  // The kernel of a node, null when there is none of its name.
  const pbKernelInfo* kernelOf(const pbgNodeInfo& node) const { return kernels_.find(node.name); }

  // Its failures are reported under the first node that needs it.
  std::shared_ptr<NodeProgram> programOf(const pbgNodeInfo& node);

 private:
  using Key = std::pair<const pbKernelInfo*, std::string_view>;  // with the node's function

  const pbGraphInfo& info_;
  ChannelOrder channelOrder_;
  KernelsByName kernels_;
  std::map<Key, std::shared_ptr<NodeProgram>> programs_;
};

}  // namespace vellumtide
