#pragma once

#include <string>
#include <string_view>

#include "kernel/element_type.h"

namespace vellumtide {

/// The float-valued type that carries a value of `type` from the vertex to the fragment stage; the
/// kernel keyword for types that need no carrier.
std::string_view varyingTypeName(pbElementType type);

/// The carrier of a dependent: "vlmk_name", or "_vlmk_name" for "_name".
std::string prefixedName(std::string_view name);

/// The uniform of a graph's parameter: "vlmg_name", or "_vlmg_name" for "_name". Not cut.
std::string graphParameterName(std::string_view name);

/// What graphParameterName puts in front of `name`.
std::string_view graphParameterPrefix(std::string_view name);

}  // namespace vellumtide
