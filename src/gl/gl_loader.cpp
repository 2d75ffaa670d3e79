#include "gl/gl_loader.h"

#include <GL/glew.h>

namespace vellumtide {

const char* initialiseGL() {
  // Without this a core profile's extension list is not believed.
  glewExperimental = GL_TRUE;
  const GLenum code = glewInit();
  if (code == GLEW_OK) return nullptr;
#ifdef GLEW_ERROR_NO_GLX_DISPLAY
  // A GLEW built for GLX ends with this on an EGL context, after it has loaded all of GL.
  if (code == GLEW_ERROR_NO_GLX_DISPLAY && glAvailable()) return nullptr;
#endif
  return reinterpret_cast<const char*>(glewGetErrorString(code));
}

bool glAvailable() {
  return glCreateShader && glGenFramebuffersEXT;
}

}  // namespace vellumtide
