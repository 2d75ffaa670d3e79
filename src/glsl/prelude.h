#pragma once

#include <string_view>

namespace vellumtide {

/// Definitions that let the shader compiler read the kernel language's type names.
std::string_view typePrelude();

/// The uniforms every shader has, and the kernel language's functions on top of them. Expects
/// vlmk__INPUT_MAX and vlmk_SWIZZLE_IN to be defined.
std::string_view functionPrelude();

}  // namespace vellumtide
