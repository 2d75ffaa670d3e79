#include <windows.h>

#include "subject_gl.h"

// The context is left behind: deleting it would make it not current.
void makeOtherContextCurrent() {
  const HDC device = wglGetCurrentDC();
  wglMakeCurrent(device, wglCreateContext(device));
}

void makeNoContextCurrent() {
  wglMakeCurrent(nullptr, nullptr);
}
