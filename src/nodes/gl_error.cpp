#include "nodes/gl_error.h"

#include <string>

#include "core/message_channels.h"
#include "gl/gl_headers.h"

#include <GL/glu.h>

namespace vellumtide {

std::string glErrorText(unsigned code) {
  // Older GLU knows it by another name only.
  if (code == GL_INVALID_FRAMEBUFFER_OPERATION_EXT) return "invalid framebuffer operation";
  const auto* text = reinterpret_cast<const char*>(gluErrorString(code));
  return text ? text : "(No Error String)";
}

unsigned sendGLError() {
  const GLenum code = glGetError();
  if (code == GL_NO_ERROR) return 0;
  sendMessage(Channel::Ignored, "OpenGL Error: " + glErrorText(code) + "\n");
  return code;
}

bool discardGLErrors() {
  // A driver has a flag for each kind of error; a lost context never ends to report one.
  constexpr int kMostFlags = 16;
  int count = 0;
  while (count < kMostFlags && glGetError() != GL_NO_ERROR)
    ++count;
  return count > 0;
}

}  // namespace vellumtide
