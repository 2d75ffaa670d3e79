#include "kernel/element_type.h"

#include <array>
#include <cstddef>

namespace vellumtide {
namespace {

struct TypeRow {
  std::string_view keyword;
  BaseKind kind;
  int components;
};

constexpr std::array<TypeRow, kElementTypeCount> kTypes{{
    {"", BaseKind::None, 0},          {"int", BaseKind::Int, 1},
    {"int2", BaseKind::Int, 2},       {"int3", BaseKind::Int, 3},
    {"int4", BaseKind::Int, 4},       {"float", BaseKind::Float, 1},
    {"float2", BaseKind::Float, 2},   {"float3", BaseKind::Float, 3},
    {"float4", BaseKind::Float, 4},   {"float2x2", BaseKind::Float, 4},
    {"float3x3", BaseKind::Float, 9}, {"float4x4", BaseKind::Float, 16},
    {"bool", BaseKind::Bool, 1},      {"bool2", BaseKind::Bool, 2},
    {"bool3", BaseKind::Bool, 3},     {"bool4", BaseKind::Bool, 4},
    {"string", BaseKind::None, 0},    {"image1", BaseKind::None, 1},
    {"image2", BaseKind::None, 2},    {"image3", BaseKind::None, 3},
    {"image4", BaseKind::None, 4},    {"pixel1", BaseKind::Float, 1},
    {"pixel2", BaseKind::Float, 2},   {"pixel3", BaseKind::Float, 3},
    {"pixel4", BaseKind::Float, 4},
}};

/// The row of a type; the row of None for numbers outside the vocabulary.
const TypeRow& rowOf(pbElementType type) {
  const auto code = static_cast<std::size_t>(type);
  return kTypes[code < kTypes.size() ? code : 0];
}

}  // namespace

std::string_view typeName(pbElementType type) {
  return rowOf(type).keyword;
}

pbElementType typeFromName(std::string_view text) {
  for (std::size_t code = 0; code < kTypes.size(); ++code) {
    if (kTypes[code].keyword == text) return static_cast<pbElementType>(code);
  }
  return pbElementType::None;
}

BaseKind baseKind(pbElementType type) {
  return rowOf(type).kind;
}

int componentCount(pbElementType type) {
  return rowOf(type).components;
}

}  // namespace vellumtide
