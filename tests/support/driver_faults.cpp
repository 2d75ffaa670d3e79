#include "tests/support/driver_faults.h"

#include <EGL/egl.h>
#include <GL/gl.h>
#include <dlfcn.h>

#include <set>
#include <utility>

namespace vellumtide::end_to_end {
namespace {

std::set<EGLContext> spared;
GLenum pendingError = GL_NO_ERROR;

// The driver's own function of a name, which this program's hides.
template <class Function>
Function* driversOwn(const char* library, const char* name) {
  return reinterpret_cast<Function*>(dlsym(dlopen(library, RTLD_LAZY), name));
}

constexpr const char* kEgl = "libEGL.so.1";
constexpr const char* kOpenGL = "libOpenGL.so.0";

}  // namespace

DriverFaults& driverFaults() {
  static DriverFaults faults;
  return faults;
}

extern "C" {

EGLContext EGLAPIENTRY eglCreateContext(EGLDisplay display, EGLConfig config, EGLContext shared,
                                        const EGLint* attributes) {
  static const auto create = driversOwn<decltype(eglCreateContext)>(kEgl, "eglCreateContext");
  if (driverFaults().noContexts) return EGL_NO_CONTEXT;
  const EGLContext made = create(display, config, shared, attributes);
  if (driverFaults().sparesNew) spared.insert(made);
  return made;
}

EGLBoolean EGLAPIENTRY eglMakeCurrent(EGLDisplay display, EGLSurface draw, EGLSurface read,
                                      EGLContext context) {
  static const auto makeCurrent = driversOwn<decltype(eglMakeCurrent)>(kEgl, "eglMakeCurrent");
  int& refusals = driverFaults().refusals;
  if (context == EGL_NO_CONTEXT || refusals == 0 || spared.count(context))
    return makeCurrent(display, draw, read, context);
  if (refusals > 0) --refusals;
  return EGL_FALSE;
}

void APIENTRY glEnd() {
  static const auto end = driversOwn<decltype(glEnd)>(kOpenGL, "glEnd");
  end();
  if (const unsigned error = std::exchange(driverFaults().errorAfterDrawing, 0)) {
    pendingError = error;
  }
}

GLenum APIENTRY glGetError() {
  static const auto getError = driversOwn<decltype(glGetError)>(kOpenGL, "glGetError");
  const GLenum error = std::exchange(pendingError, GLenum{GL_NO_ERROR});
  return error ? error : getError();
}

}  // extern "C"

}  // namespace vellumtide::end_to_end
