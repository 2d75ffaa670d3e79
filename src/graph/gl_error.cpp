#include "graph/gl_error.h"

#include <string>

#include "core/message_channels.h"
#include "gl/gl_headers.h"

#include <GL/glu.h>

namespace vellumtide {

unsigned sendGLError() {
  const GLenum code = glGetError();
  if (code == GL_NO_ERROR) return 0;
  const auto* text = reinterpret_cast<const char*>(gluErrorString(code));
  sendMessage(Channel::Ignored,
              "OpenGL Error: " + std::string(text ? text : "(No Error String)") + "\n");
  return code;
}

}  // namespace vellumtide
