// The shader texts that the module makes of a program, with the way back to the program's file.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/build_errors/driver_message.h"
#include "cli/program/program_file.h"
#include "glsl/shader_text.h"
#include "graph/graph_text_map.h"
#include "kernel/source_map.h"

namespace vellumtide::cli {

// One text that comes from the file: a kernel's body or a node's function.
struct OwnText {
  std::size_t size = 0;
  SourceMap source;                 // of the text, in the kernel's or function's source
  const SourceMap* file = nullptr;  // of that source in the file; null where it is the file
  std::optional<std::size_t> end;   // in the file: what closes it, or behind its last character
  bool isClosed = true;

  std::optional<std::size_t> fileOffset(std::size_t at) const;
};

// The texts of one node, or of a kernel that stands alone.
class NodeShaders {
 public:
  bool hasKernel = false;  // without one there are no texts
  std::string label;
  std::vector<std::string> nodes;  // all that share these texts, whose errors are told once
  OwnText body, function;

  const std::string& text(ShaderStage stage) const {
    return stage == ShaderStage::Vertex ? vertex_ : fragment_;
  }

  // The byte of the file that stands at `at` in a stage's text; nothing for generated text.
  std::optional<std::size_t> fileOffset(ShaderStage stage, std::size_t at) const;

  // The end in the file of the kernel or function that a syntax error at `at`, in the text behind
  // it, is about: nothing stands in between, or it is not closed.
  std::optional<std::size_t> endBefore(ShaderStage stage, std::size_t at) const;

 private:
  friend class ProgramShaders;

  const OwnTextPlaces& places(ShaderStage stage) const {
    return stage == ShaderStage::Vertex ? places_.vertex : places_.fragment;
  }

  std::string vertex_, fragment_;
  ShaderTextPlaces places_;
};

// Refers to the program, which has to outlive it.
class ProgramShaders {
 public:
  explicit ProgramShaders(const Program& program);

  // The labels of the program's nodes in the module's log, in their order.
  std::vector<std::string> labels() const;

  NodeShaders node(std::size_t index) const;

 private:
  std::vector<std::string> nodesLike(const pbGraphInfo& graph, const KernelsByName& kernels,
                                     std::size_t index) const;
  void addGraphNode(NodeShaders& shaders, const pbGraphInfo& graph, std::size_t index) const;

  const Program& program_;
  GraphTextMaps maps_;
};

}  // namespace vellumtide::cli
