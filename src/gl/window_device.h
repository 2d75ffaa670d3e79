#pragma once

// The private OpenGL device: a hidden window (on Linux an offscreen EGL surface) with its own
// context, and the bracket that makes it current and gives the host its own context back.

#include <chrono>

namespace vellumtide {

// The device's three handles; all null until creation has succeeded.
struct WindowDevice {
  void* window = nullptr;  // Windows: HWND   Linux: EGLDisplay
  void* deviceContext =
      nullptr;  // Windows: HDC    Linux: EGLSurface, null for a surfaceless context
  void* renderContext = nullptr;  // Windows: HGLRC  Linux: EGLContext
};

// What was current on the calling thread before a switch.
struct SavedCurrentContext {
  void* deviceContext = nullptr;  // Windows: HDC    Linux: the surface drawn to
  void* renderContext = nullptr;  // Windows: HGLRC  Linux: EGLContext
  void* display = nullptr;        // Linux only: EGLDisplay of the context
  void* readSurface = nullptr;    // Linux only: the surface read from
  unsigned boundApi = 0;          // Linux only: the client API that eglBindAPI had bound
};

// Sets the text behind the class name and title of the hidden window: at most its first 63
// characters are kept. Call before createWindowDevice.
void setDeviceNameSuffix(const char* text);
const char* deviceNameSuffix();

// Name of the window class, composed by createWindowDevice; empty before the first creation.
const char* deviceClassName();

// Makes the device and leaves no context current on the calling thread. Nothing is reported: a
// handle that could not be made is null, and if there is no device at all (the window class
// cannot be registered, no EGL display) the three arguments stay as they were.
void createWindowDevice(void*& window, void*& deviceContext, void*& renderContext);

// Deletes the context and releases its surface. The window (on Linux the display) goes with the
// process. Returns non-zero when nothing of the device is left; callers may ignore it.
int destroyWindowDevice(void* window, void* deviceContext, void* renderContext);

SavedCurrentContext saveCurrentContext();
// False when the driver refuses; nothing is current then.
bool makeDeviceCurrent(const WindowDevice& device);
void restoreCurrentContext(const SavedCurrentContext& saved);

// Makes the device current for a scope; what was current before is current again afterwards, also
// when the scope is left by an exception. Scopes may nest. A device that the driver refuses, for
// instance because another thread has it, is asked for again until the patience is over.
class ScopedCurrentContext {
 public:
  explicit ScopedCurrentContext(const WindowDevice& device,
                                std::chrono::milliseconds patience = {});
  ~ScopedCurrentContext();
  ScopedCurrentContext(const ScopedCurrentContext&) = delete;
  ScopedCurrentContext& operator=(const ScopedCurrentContext&) = delete;

  // False when the device could not be made current: nothing may be drawn in this scope.
  bool isCurrent() const { return current_; }

 private:
  SavedCurrentContext saved_;
  bool current_ = false;
};

}  // namespace vellumtide
