// The GLSL program of a kernel node with the places of the uniforms that every frame sets.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "gl/gl_headers.h"
#include "graph/graph_parameter.h"

namespace vellumtide {

// Built once from two texts; nodes with the same texts share one. The program object is kept even
// after a failure: drawing with it does whatever GL does with an unlinked program.
class NodeProgram {
 public:
  NodeProgram(const std::string& vertexText, const std::string& fragmentText);
  ~NodeProgram();
  NodeProgram(const NodeProgram&) = delete;
  NodeProgram& operator=(const NodeProgram&) = delete;

  // Sends what went wrong, under the node's name, to the message channels.
  void reportFailures(const std::string& label) const;

  GLuint id() const { return program_; }

  GLint outputPixelSize = -1;
  GLint texturePixelSize = -1;
  GLint compSize = -1;
  GLint downsamplingRate = -1;

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
  struct Failure {
    std::string notice;  // what follows the label on channels 0 and 1
    std::string log;     // what follows the label on channel 2
    std::string dump;    // for standard output
  };

  void compile(const Stage& stage, const std::string& text);

  GLuint program_ = 0;
  bool located_ = false;
  std::vector<GLint> parameterLocations_;
  std::vector<Failure> failures_;
};

// The programs of one graph by their texts.
class NodePrograms {
 public:
  std::shared_ptr<NodeProgram> get(const std::string& vertexText, const std::string& fragmentText);

 private:
  std::unordered_map<std::string, std::weak_ptr<NodeProgram>> byTexts_;
};

}  // namespace vellumtide
