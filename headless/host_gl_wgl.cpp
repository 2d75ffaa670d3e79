#include <windows.h>

#include <vector>

#include "headless/host_gl_context.h"

namespace vellumtide::headless {
namespace {

constexpr const char* kWindowClass = "VellumtideHeadlessHost";

std::string failed(const char* call) {
  return std::string(call) + " failed (error " + std::to_string(GetLastError()) + ")";
}

}  // namespace

struct HostGlContext::State {
  HWND window = nullptr;
  HDC deviceContext = nullptr;
  HGLRC renderContext = nullptr;
  struct Previous {
    HDC deviceContext;
    HGLRC renderContext;
  };
  std::vector<Previous> previous;  // innermost last

  // "" when everything was made, else what failed.
  std::string make() {
    const HINSTANCE instance = GetModuleHandleA(nullptr);
    WNDCLASSEXA windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_OWNDC;
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = kWindowClass;
    RegisterClassExA(&windowClass);  // fails harmlessly from the second context on
    window = CreateWindowExA(0, kWindowClass, "", WS_OVERLAPPED, 0, 0, 16, 16, nullptr, nullptr,
                             instance, nullptr);
    if (!window) return failed("CreateWindowExA");
    deviceContext = GetDC(window);
    PIXELFORMATDESCRIPTOR format{};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
    format.iPixelType = PFD_TYPE_RGBA;
    format.cColorBits = 32;
    const int chosen = ChoosePixelFormat(deviceContext, &format);
    if (chosen == 0 || !SetPixelFormat(deviceContext, chosen, &format)) {
      return failed("SetPixelFormat");
    }
    renderContext = wglCreateContext(deviceContext);
    return renderContext ? "" : failed("wglCreateContext");
  }
};

HostGlContext::HostGlContext() : state_(std::make_unique<State>()) {
  status_ = state_->make();
  usable_ = status_.empty();
  if (usable_) status_ = "WGL";
}

HostGlContext::~HostGlContext() {
  if (state_->renderContext) wglDeleteContext(state_->renderContext);
  if (state_->deviceContext) ReleaseDC(state_->window, state_->deviceContext);
  if (state_->window) DestroyWindow(state_->window);
}

void HostGlContext::makeCurrent() {
  if (!usable_) return;
  state_->previous.push_back({wglGetCurrentDC(), wglGetCurrentContext()});
  wglMakeCurrent(state_->deviceContext, state_->renderContext);
}

void HostGlContext::release() {
  if (!usable_ || state_->previous.empty()) return;
  const State::Previous before = state_->previous.back();
  state_->previous.pop_back();
  wglMakeCurrent(before.deviceContext, before.renderContext);
}

std::string HostGlContext::difference() const {
  if (!usable_) return "";
  const HGLRC current = wglGetCurrentContext();
  if (!current) return "no context is current";
  if (current != state_->renderContext) return "another context is current";
  if (wglGetCurrentDC() != state_->deviceContext) return "another device context is current";
  return "";
}

}  // namespace vellumtide::headless
