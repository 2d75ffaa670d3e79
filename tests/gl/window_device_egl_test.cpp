#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <gtest/gtest.h>

#include "gl/window_device.h"

namespace vellumtide {
namespace {

// A host that draws with OpenGL ES, through a display that is not the device's.
TEST(WindowDeviceEgl, ContextOfAnotherDisplayAndApiComesBack) {
  EGLDeviceEXT hardware = nullptr;
  EGLint count = 0;
  const auto queryDevices =
      reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
  if (!queryDevices || !queryDevices(1, &hardware, &count) || count < 1) {
    GTEST_SKIP() << "this EGL lists no devices";
  }
  const EGLDisplay display = eglGetPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, hardware, nullptr);
  ASSERT_TRUE(eglInitialize(display, nullptr, nullptr));
  eglBindAPI(EGL_OPENGL_ES_API);
  const EGLint attributes[][2] = {{EGL_SURFACE_TYPE, EGL_PBUFFER_BIT},
                                  {EGL_RENDERABLE_TYPE, EGL_OPENGL_ES2_BIT},
                                  {EGL_NONE, EGL_NONE}};
  EGLConfig config = nullptr;
  ASSERT_TRUE(eglChooseConfig(display, attributes[0], &config, 1, &count) && count == 1);
  const EGLint size[] = {EGL_WIDTH, 4, EGL_HEIGHT, 4, EGL_NONE};
  const EGLSurface draw = eglCreatePbufferSurface(display, config, size);
  const EGLSurface read = eglCreatePbufferSurface(display, config, size);
  const EGLint version[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
  const EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, version);

  WindowDevice device;
  createWindowDevice(device.window, device.deviceContext, device.renderContext);
  ASSERT_NE(device.window, display);
  // The host's API may be another than that of its context at the moment of the call.
  for (const EGLenum bound : {EGL_OPENGL_ES_API, EGL_OPENGL_API}) {
    ASSERT_TRUE(eglMakeCurrent(display, draw, read, context));
    eglBindAPI(bound);
    {
      const ScopedCurrentContext scope(device);
      EXPECT_TRUE(scope.isCurrent());
      EXPECT_EQ(eglGetCurrentContext(), device.renderContext);
    }
    EXPECT_EQ(eglQueryAPI(), bound);
    eglBindAPI(EGL_OPENGL_ES_API);
    EXPECT_EQ(eglGetCurrentContext(), context);
    EXPECT_EQ(eglGetCurrentDisplay(), display);
    EXPECT_EQ(eglGetCurrentSurface(EGL_DRAW), draw);
    EXPECT_EQ(eglGetCurrentSurface(EGL_READ), read);
  }
  eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  eglDestroyContext(display, context);
  EXPECT_TRUE(destroyWindowDevice(device.window, device.deviceContext, device.renderContext));
}

}  // namespace
}  // namespace vellumtide
