#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <dlfcn.h>

#include <cstring>
#include <initializer_list>

#include "gl/window_device.h"
#include "gl/window_device_names.h"

namespace vellumtide {
namespace {

constexpr EGLint surfaceSize = 50;

bool hasWord(const char* list, const char* word) {
  const std::size_t length = std::strlen(word);
  for (const char* at = list; at && (at = std::strstr(at, word)); at += length) {
    const bool starts = at == list || at[-1] == ' ';
    if (starts && (at[length] == ' ' || at[length] == '\0')) return true;
  }
  return false;
}

// A display that has desktop GL. Displays belong to the process: one that the host has initialised
// is only found here, and none is ever terminated.
bool usable(EGLDisplay display) {
  return display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) &&
         hasWord(eglQueryString(display, EGL_CLIENT_APIS), "OpenGL");
}

EGLDisplay openDisplay() {
  if (hasWord(eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS), "EGL_MESA_platform_surfaceless")) {
    const EGLDisplay surfaceless =
        eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (usable(surfaceless)) return surfaceless;
  }
  const EGLDisplay standard = eglGetDisplay(EGL_DEFAULT_DISPLAY);
  return usable(standard) ? standard : EGL_NO_DISPLAY;
}

// 32 bits of colour and a depth buffer of at least 8; pbuffers are always double-buffered.
EGLConfig chooseConfig(EGLDisplay display, EGLint surfaceType) {
  const EGLint wanted[][2] = {{EGL_SURFACE_TYPE, surfaceType},
                              {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT},
                              {EGL_RED_SIZE, 8},
                              {EGL_GREEN_SIZE, 8},
                              {EGL_BLUE_SIZE, 8},
                              {EGL_ALPHA_SIZE, 8},
                              {EGL_DEPTH_SIZE, 8},
                              {EGL_NONE, EGL_NONE}};
  EGLConfig config = nullptr;
  EGLint count = 0;
  if (!eglChooseConfig(display, wanted[0], &config, 1, &count) || count < 1) return nullptr;
  return config;
}

// Driver libraries keep threads and thread-local data, so they must outlive this module.
void keepDriverLoaded() {
  dlopen("libEGL.so.1", RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}

// Leaves the calling thread without a context, whichever client API the current one is of.
void releaseCurrentContext() {
  const EGLenum boundApi = eglQueryAPI();
  for (const EGLenum api : {EGL_OPENGL_API, EGL_OPENGL_ES_API}) {
    if (!eglBindAPI(api) || !eglGetCurrentContext()) continue;
    eglMakeCurrent(eglGetCurrentDisplay(), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  }
  eglBindAPI(boundApi);
}

}  // namespace

void createWindowDevice(void*& window, void*& deviceContext, void*& renderContext) {
  composeDeviceClassName();
  keepDriverLoaded();
  const EGLDisplay display = openDisplay();
  if (display == EGL_NO_DISPLAY) return;

  EGLSurface surface = EGL_NO_SURFACE;
  EGLConfig config = chooseConfig(display, EGL_PBUFFER_BIT);
  if (config) {
    const EGLint size[] = {EGL_WIDTH, surfaceSize, EGL_HEIGHT, surfaceSize, EGL_NONE};
    surface = eglCreatePbufferSurface(display, config, size);
  } else {
    config = chooseConfig(display, EGL_DONT_CARE);
  }
  releaseCurrentContext();
  const EGLenum boundApi = eglQueryAPI();
  eglBindAPI(EGL_OPENGL_API);
  const EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
  eglBindAPI(boundApi);

  window = display;
  deviceContext = surface;
  renderContext = context;
}

int destroyWindowDevice(void* window, void* deviceContext, void* renderContext) {
  if (!window) return 0;
  const bool contextGone = !renderContext || eglDestroyContext(window, renderContext);
  const bool surfaceGone = !deviceContext || eglDestroySurface(window, deviceContext);
  return contextGone && surfaceGone;
}

SavedCurrentContext saveCurrentContext() {
  SavedCurrentContext saved;
  saved.boundApi = eglQueryAPI();
  for (const EGLenum api :
       {saved.boundApi, unsigned{EGL_OPENGL_API}, unsigned{EGL_OPENGL_ES_API}}) {
    if (!eglBindAPI(api) || !eglGetCurrentContext()) continue;
    saved.display = eglGetCurrentDisplay();
    saved.deviceContext = eglGetCurrentSurface(EGL_DRAW);
    saved.readSurface = eglGetCurrentSurface(EGL_READ);
    saved.renderContext = eglGetCurrentContext();
    break;
  }
  eglBindAPI(saved.boundApi);
  return saved;
}

bool makeDeviceCurrent(const WindowDevice& device) {
  if (device.window && device.renderContext &&
      eglMakeCurrent(device.window, device.deviceContext, device.deviceContext,
                     device.renderContext)) {
    return true;
  }
  releaseCurrentContext();
  return false;
}

void restoreCurrentContext(const SavedCurrentContext& saved) {
  if (saved.renderContext) {
    eglMakeCurrent(saved.display, saved.deviceContext, saved.readSurface, saved.renderContext);
  } else {
    releaseCurrentContext();
  }
  eglBindAPI(saved.boundApi);
}

}  // namespace vellumtide
