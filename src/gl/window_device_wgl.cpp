#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include "gl/window_device.h"
#include "gl/window_device_names.h"

namespace vellumtide {
namespace {

// The class belongs to no module, so that it is found again whichever module asks.
bool registerClass(HINSTANCE process, const char* name) {
  WNDCLASSEXA existing{};
  existing.cbSize = sizeof existing;
  if (GetClassInfoExA(process, name, &existing)) return true;

  WNDCLASSEXA windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.style = CS_VREDRAW | CS_HREDRAW;
  windowClass.lpfnWndProc = DefWindowProcA;
  windowClass.hInstance = nullptr;
  windowClass.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));  // IDC_ARROW
  windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
  windowClass.lpszClassName = name;
  return RegisterClassExA(&windowClass) != 0;
}

PIXELFORMATDESCRIPTOR pixelFormat() {
  PIXELFORMATDESCRIPTOR format{};
  format.nSize = sizeof format;
  format.nVersion = 1;
  format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
  format.iPixelType = PFD_TYPE_RGBA;
  format.cColorBits = 32;
  format.cDepthBits = 8;
  format.iLayerType = PFD_MAIN_PLANE;
  return format;
}

}  // namespace

void createWindowDevice(void*& window, void*& deviceContext, void*& renderContext) {
  const char* name = composeDeviceClassName();
  const HINSTANCE process = GetModuleHandleA(nullptr);
  if (!registerClass(process, name)) return;

  const DeviceName title = deviceWindowTitle();
  const HWND hidden =
      CreateWindowExA(0, name, title.data(), 0, 0, 0, 50, 50, nullptr, nullptr, process, nullptr);
  const HDC dc = GetDC(hidden);
  const PIXELFORMATDESCRIPTOR wanted = pixelFormat();
  const int chosen = ChoosePixelFormat(dc, &wanted);
  wglMakeCurrent(nullptr, nullptr);
  SetPixelFormat(dc, chosen, &wanted);
  const HGLRC context = wglCreateContext(dc);

  window = hidden;
  deviceContext = dc;
  renderContext = context;
}

int destroyWindowDevice(void* window, void* deviceContext, void* renderContext) {
  wglDeleteContext(static_cast<HGLRC>(renderContext));
  ReleaseDC(static_cast<HWND>(window), static_cast<HDC>(deviceContext));
  // The window stays, so this fails while one is left; the class goes with the process then.
  return UnregisterClassA(deviceClassName(), nullptr);
}

SavedCurrentContext saveCurrentContext() {
  SavedCurrentContext saved;
  saved.deviceContext = wglGetCurrentDC();
  saved.renderContext = wglGetCurrentContext();
  return saved;
}

bool makeDeviceCurrent(const WindowDevice& device) {
  const BOOL made = wglMakeCurrent(static_cast<HDC>(device.deviceContext),
                                   static_cast<HGLRC>(device.renderContext));
  return made && device.renderContext;
}

void restoreCurrentContext(const SavedCurrentContext& saved) {
  wglMakeCurrent(static_cast<HDC>(saved.deviceContext), static_cast<HGLRC>(saved.renderContext));
}

}  // namespace vellumtide
