#pragma once

#include "gl/gl_headers.h"

namespace vellumtide {

// A general GLSL program of one vertex and one fragment shader, with diagnostics in the report
// sink. The device must be current for every operation, destruction included.
class ShaderProgram {
 public:
  // Bits of the result of build; 0 means success.
  enum BuildFailure : int { VertexFailed = 1, FragmentFailed = 2, LinkFailed = 4 };

  ShaderProgram() = default;
  ~ShaderProgram() { release(); }
  ShaderProgram(const ShaderProgram&) = delete;
  ShaderProgram& operator=(const ShaderProgram&) = delete;

  // Replaces what was built before. The program is linked even when a shader failed, and kept
  // even after a failure: check the result before drawing.
  int build(const char* vertexSource, const char* fragmentSource);

  // Makes the program and both shaders without sources; returns 0.
  int create();

  void bind() const;  // program 0 when there is none
  void release();

  GLuint id() const { return program; }

 private:
  void createObjects();

  GLuint program = 0;
  GLuint fragmentShader = 0;
  GLuint vertexShader = 0;
};

}  // namespace vellumtide
