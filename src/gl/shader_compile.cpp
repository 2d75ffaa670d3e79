#include "gl/shader_compile.h"

namespace vellumtide {
namespace {

constexpr GLsizei kLogBufferSize = 1024;

}  // namespace

bool compileShader(GLuint shader, const char* source) {
  glShaderSource(shader, 1, &source, nullptr);
  glCompileShader(shader);
  GLint compiled = GL_FALSE;
  glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
  return compiled != GL_FALSE;
}

bool linkProgram(GLuint program) {
  glLinkProgram(program);
  GLint linked = GL_FALSE;
  glGetProgramiv(program, GL_LINK_STATUS, &linked);
  return linked != GL_FALSE;
}

std::string shaderLog(GLuint shader) {
  char log[kLogBufferSize] = "";
  glGetShaderInfoLog(shader, kLogBufferSize, nullptr, log);
  return log;
}

std::string programLog(GLuint program) {
  char log[kLogBufferSize] = "";
  glGetProgramInfoLog(program, kLogBufferSize, nullptr, log);
  return log;
}

}  // namespace vellumtide
