#pragma once

#include <cstdint>
#include <string_view>

namespace vellumtide {

/// The element types of the kernel language. The numbers are stored in projects: never reorder.
enum class pbElementType : std::int32_t {
  None,
  Int,
  Int2,
  Int3,
  Int4,
  Float,
  Float2,
  Float3,
  Float4,
  Float2x2,
  Float3x3,
  Float4x4,
  Bool,
  Bool2,
  Bool3,
  Bool4,
  String,
  Image1,
  Image2,
  Image3,
  Image4,
  Pixel1,
  Pixel2,
  Pixel3,
  Pixel4,
};

inline constexpr int kElementTypeCount = 25;

/// How the components of a type are stored in value cells.
enum class BaseKind : std::int32_t { None = 0, Int = 1, Float = 2, Bool = 3 };

/// The type's keyword; empty for None and for numbers outside the vocabulary.
std::string_view typeName(pbElementType type);

/// The type whose keyword is exactly `text`; None for anything else.
pbElementType typeFromName(std::string_view text);

BaseKind baseKind(pbElementType type);

/// 0 (none, string) to 16 (float4x4).
int componentCount(pbElementType type);

/// True for the int and bool families: values that cross from the vertex to the fragment stage in
/// a float carrier of their own.
constexpr bool isCarried(pbElementType type) {
  return (type >= pbElementType::Int && type <= pbElementType::Int4) ||
         (type >= pbElementType::Bool && type <= pbElementType::Bool4);
}

}  // namespace vellumtide
