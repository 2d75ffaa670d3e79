#include <EGL/egl.h>

#include "subject_gl.h"

void makeOtherContextCurrent() {
  const EGLDisplay display = eglGetCurrentDisplay();
  EGLConfig config = nullptr;
  EGLint count = 0;
  const EGLint any[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
  eglChooseConfig(display, any, &config, 1, &count);
  const EGLContext other = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
  eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, other);
  eglDestroyContext(display, other);
}

void makeNoContextCurrent() {
  eglMakeCurrent(eglGetCurrentDisplay(), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}
