#include <EGL/egl.h>
#include <dlfcn.h>

#include <set>

#include "tests/scenarios/driver_faults.h"

namespace {

int own = 0, left = 0, refused = 0;
std::set<EGLContext> ownContexts;

// The driver's function that stands behind one of ours.
template <class Function>
Function* behind(Function*, const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" __attribute__((visibility("default"))) EGLContext eglCreateContext(
    EGLDisplay display, EGLConfig config, EGLContext shared, const EGLint* attributes) {
  const EGLContext made =
      behind(eglCreateContext, "eglCreateContext")(display, config, shared, attributes);
  if (own > 0) ownContexts.insert(made);
  return made;
}

extern "C" __attribute__((visibility("default"))) EGLBoolean eglMakeCurrent(EGLDisplay display,
                                                                            EGLSurface draw,
                                                                            EGLSurface read,
                                                                            EGLContext context) {
  if (left > 0 && context != EGL_NO_CONTEXT && ownContexts.count(context) == 0) {
    --left;
    ++refused;
    return EGL_FALSE;
  }
  return behind(eglMakeCurrent, "eglMakeCurrent")(display, draw, read, context);
}

namespace vellumtide::scenarios {

OwnContexts::OwnContexts() {
  ++own;
}
OwnContexts::~OwnContexts() {
  --own;
}

void refuseDevice(int times) {
  left = times;
  refused = 0;
}

int deviceRefusals() {
  return refused;
}

}  // namespace vellumtide::scenarios
