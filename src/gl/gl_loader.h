#pragma once

namespace vellumtide {

// Loads the GL entry points of the context that is current. Returns null on success, else the
// loader's error text.
const char* initialiseGL();

}  // namespace vellumtide
