#pragma once

namespace vellumtide {

// Loads the GL entry points of the context that is current. Returns null on success, else the
// loader's error text.
const char* initialiseGL();

// Whether the shader and framebuffer entry points are loaded. Where they are not, no GL object is
// made and nothing can be drawn.
bool glAvailable();

}  // namespace vellumtide
