#include "gl/shader_program.h"

#include <cstddef>
#include <memory>
#include <new>

#include "gl/gl_loader.h"
#include "gl/gl_report.h"
#include "gl/shader_compile.h"

namespace vellumtide {

int ShaderProgram::build(const char* vertexSource, const char* fragmentSource) {
  int result = 0;
  release();
  createObjects();
  if (!compileShader(vertexShader, vertexSource)) {
    reportText("Compile error in vertex shader.\n");
    result |= VertexFailed;
    reportText("%s", shaderLog(vertexShader).c_str());
  }
  if (!compileShader(fragmentShader, fragmentSource)) {
    reportText("Compile error in fragment shader.\n");
    result |= FragmentFailed;
    reportText("%s", shaderLog(fragmentShader).c_str());
  }
  glAttachShader(program, vertexShader);
  glAttachShader(program, fragmentShader);
  if (linkProgram(program)) return result;

  reportText("Link error at program %d\n", static_cast<int>(program));
  result |= LinkFailed;
  GLint length = 0;
  glGetProgramiv(program, GL_INFO_LOG_LENGTH, &length);
  if (length < 2) return result;
  const std::unique_ptr<char[]> log(new (std::nothrow) char[static_cast<std::size_t>(length)]);
  if (!log) return result;
  glGetProgramInfoLog(program, length, nullptr, log.get());
  reportText("InfoLog:\n%s\n", log.get());
  return result;
}

int ShaderProgram::create() {
  checkGLError();
  release();
  checkGLError();
  createObjects();
  checkGLError();
  return 0;
}

void ShaderProgram::bind() const {
  glUseProgram(glIsProgram(program) ? program : 0);
}

void ShaderProgram::release() {
  if (!program || !glAvailable() || !glIsProgram(program)) return;
  glUseProgram(0);
  glDeleteShader(vertexShader);
  glDeleteShader(fragmentShader);
  glDeleteProgram(program);
  program = fragmentShader = vertexShader = 0;
}

void ShaderProgram::createObjects() {
  program = glCreateProgram();
  vertexShader = glCreateShader(GL_VERTEX_SHADER);
  fragmentShader = glCreateShader(GL_FRAGMENT_SHADER);
}

}  // namespace vellumtide
