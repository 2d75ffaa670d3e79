#include "glsl/names.h"

namespace vellumtide {
namespace {

std::string withPrefix(std::string_view prefix, std::string_view name) {
  std::string result;
  result.reserve(prefix.size() + name.size());
  return result.append(prefix).append(name);
}

}  // namespace

std::string_view varyingTypeName(pbElementType type) {
  switch (type) {
    case pbElementType::Int:
    case pbElementType::Bool:
      return "float";
    case pbElementType::Int2:
    case pbElementType::Float2:
    case pbElementType::Bool2:
      return "vec2";
    case pbElementType::Int3:
    case pbElementType::Float3:
    case pbElementType::Bool3:
      return "vec3";
    case pbElementType::Int4:
    case pbElementType::Float4:
    case pbElementType::Bool4:
      return "vec4";
    case pbElementType::Float2x2:
      return "mat2";
    case pbElementType::Float3x3:
      return "mat3";
    case pbElementType::Float4x4:
      return "mat4";
    default:
      return typeName(type);
  }
}

std::string prefixedName(std::string_view name) {
  return withPrefix(name.starts_with('_') ? "_vlmk" : "vlmk_", name);
}

std::string_view graphParameterPrefix(std::string_view name) {
  return name.starts_with('_') ? "_vlmg" : "vlmg_";
}

std::string graphParameterName(std::string_view name) {
  return withPrefix(graphParameterPrefix(name), name);
}

}  // namespace vellumtide
