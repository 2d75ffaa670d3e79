#pragma once

#include "gl/gl_headers.h"
#include "nodes/graph_parameter.h"

namespace vellumtide {

// Sets the uniform of one parameter in the program that is in use, from the record's current
// value; a location of -1 is ignored by GL.
void setParameterUniform(GLint location, const pbGraphParameter& record);

}  // namespace vellumtide
