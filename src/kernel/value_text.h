#pragma once

#include <string_view>

#include "kernel/element_type.h"
#include "kernel/value.h"

namespace vellumtide {

/// The cells of a value written as plain text, the form graph files use ("0.5,0.5",
/// "true,false"). Read as formatted scanning reads it: components after the first that does not
/// match stay zero; types without components give zero cells. Independent of the locale.
ValueCells valueFromText(std::string_view text, pbElementType type);

}  // namespace vellumtide
