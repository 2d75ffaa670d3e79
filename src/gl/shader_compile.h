#pragma once

#include <string>

#include "gl/gl_headers.h"

namespace vellumtide {

// Gives the shader its one NUL-terminated source text and compiles it; false when that fails.
bool compileShader(GLuint shader, const char* source);

// Links; false when that fails.
bool linkProgram(GLuint program);

// At most 1023 characters of the driver's log.
std::string shaderLog(GLuint shader);
std::string programLog(GLuint program);

}  // namespace vellumtide
