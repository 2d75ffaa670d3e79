#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <cstdio>
#include <cstring>
#include <vector>

#include "headless/host_gl_context.h"

namespace vellumtide::headless {
namespace {

// What EGL has current on this thread.
struct Current {
  EGLDisplay display = EGL_NO_DISPLAY;
  EGLSurface draw = EGL_NO_SURFACE;
  EGLSurface read = EGL_NO_SURFACE;
  EGLContext context = EGL_NO_CONTEXT;

  static Current get() {
    return {eglGetCurrentDisplay(), eglGetCurrentSurface(EGL_DRAW), eglGetCurrentSurface(EGL_READ),
            eglGetCurrentContext()};
  }
};

EGLDisplay openDisplay(EGLint& major, EGLint& minor) {
  const char* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
  const auto platformDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
      eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (extensions && platformDisplay && std::strstr(extensions, "EGL_MESA_platform_surfaceless")) {
    const EGLDisplay display =
        platformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (display != EGL_NO_DISPLAY && eglInitialize(display, &major, &minor)) return display;
  }
  const EGLDisplay display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
  if (display != EGL_NO_DISPLAY && eglInitialize(display, &major, &minor)) return display;
  return EGL_NO_DISPLAY;
}

std::string failed(const char* call) {
  char text[64];
  std::snprintf(text, sizeof text, "%s failed (EGL error 0x%04X)", call,
                static_cast<unsigned>(eglGetError()));
  return text;
}

}  // namespace

struct HostGlContext::State {
  EGLDisplay display = EGL_NO_DISPLAY;
  EGLSurface surface = EGL_NO_SURFACE;
  EGLContext context = EGL_NO_CONTEXT;
  struct Previous {
    EGLenum api;
    Current current;
  };
  std::vector<Previous> previous;  // innermost last

  // "" when everything was made, else what failed.
  std::string make() {
    EGLint major = 0, minor = 0;
    display = openDisplay(major, minor);
    if (display == EGL_NO_DISPLAY) return failed("eglInitialize");
    if (!eglBindAPI(EGL_OPENGL_API)) return failed("eglBindAPI");
    const EGLint attributes[] = {EGL_SURFACE_TYPE,
                                 EGL_PBUFFER_BIT,
                                 EGL_RENDERABLE_TYPE,
                                 EGL_OPENGL_BIT,
                                 EGL_RED_SIZE,
                                 8,
                                 EGL_ALPHA_SIZE,
                                 8,
                                 EGL_NONE};
    EGLConfig config;
    EGLint count = 0;
    if (!eglChooseConfig(display, attributes, &config, 1, &count) || count == 0) {
      return failed("eglChooseConfig");
    }
    const EGLint size[] = {EGL_WIDTH, 16, EGL_HEIGHT, 16, EGL_NONE};
    surface = eglCreatePbufferSurface(display, config, size);
    if (surface == EGL_NO_SURFACE) return failed("eglCreatePbufferSurface");
    context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    return context == EGL_NO_CONTEXT ? failed("eglCreateContext") : "";
  }
};

HostGlContext::HostGlContext() : state_(std::make_unique<State>()) {
  const EGLenum api = eglQueryAPI();
  status_ = state_->make();
  if (api != EGL_NONE) eglBindAPI(api);
  usable_ = status_.empty();
  if (usable_) {
    status_ = std::string("EGL ") + eglQueryString(state_->display, EGL_VERSION) + ", " +
              eglQueryString(state_->display, EGL_VENDOR);
  }
}

HostGlContext::~HostGlContext() {
  // The display is the process's and stays open: a module may be using it too.
  if (state_->context != EGL_NO_CONTEXT) eglDestroyContext(state_->display, state_->context);
  if (state_->surface != EGL_NO_SURFACE) eglDestroySurface(state_->display, state_->surface);
}

void HostGlContext::makeCurrent() {
  if (!usable_) return;
  const EGLenum api = eglQueryAPI();
  eglBindAPI(EGL_OPENGL_API);
  state_->previous.push_back({api, Current::get()});
  eglMakeCurrent(state_->display, state_->surface, state_->surface, state_->context);
}

void HostGlContext::release() {
  if (!usable_ || state_->previous.empty()) return;
  const auto [api, before] = state_->previous.back();
  state_->previous.pop_back();
  eglBindAPI(EGL_OPENGL_API);
  const bool none = before.context == EGL_NO_CONTEXT;
  eglMakeCurrent(none ? state_->display : before.display, before.draw, before.read, before.context);
  eglBindAPI(api);
}

std::string HostGlContext::difference() const {
  if (!usable_) return "";
  if (eglQueryAPI() != EGL_OPENGL_API) return "another client API is bound";
  const Current current = Current::get();
  if (current.context == EGL_NO_CONTEXT) return "no context is current";
  if (current.context != state_->context) return "another context is current";
  if (current.display != state_->display) return "another display is current";
  if (current.draw != state_->surface) return "another draw surface is current";
  if (current.read != state_->surface) return "another read surface is current";
  if (!eglQueryString(state_->display, EGL_VERSION)) return "the display was closed";
  return "";
}

}  // namespace vellumtide::headless
