#include "glsl/position_variables.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace vellumtide {
namespace {

using Texts = std::unordered_set<std::string_view>;

// Parentheses within parentheses that are looked at; a hostile text has hundreds of thousands.
constexpr int kGroupLimit = 32;

/// What may be given a variable in parentheses without changing it. Functions that are not listed
/// may write to their arguments, as `modf` does, or be macros of the driver.
const Texts& pureFunctions() {
  static const Texts kFunctions = {"abs",
                                   "acos",
                                   "all",
                                   "any",
                                   "asin",
                                   "atan",
                                   "bool",
                                   "bool2",
                                   "bool3",
                                   "bool4",
                                   "bounds",
                                   "ceil",
                                   "clamp",
                                   "cos",
                                   "cross",
                                   "degrees",
                                   "distance",
                                   "dot",
                                   "equal",
                                   "exp",
                                   "exp2",
                                   "faceforward",
                                   "float",
                                   "float2",
                                   "float2x2",
                                   "float3",
                                   "float3x3",
                                   "float4",
                                   "float4x4",
                                   "floor",
                                   "fract",
                                   "greaterThan",
                                   "inset",
                                   "int",
                                   "int2",
                                   "int3",
                                   "int4",
                                   "intersect",
                                   "inverseSqrt",
                                   "inversesqrt",
                                   "isEmpty",
                                   "length",
                                   "lessThan",
                                   "log",
                                   "log2",
                                   "mat2",
                                   "mat3",
                                   "mat4",
                                   "max",
                                   "min",
                                   "mix",
                                   "mod",
                                   "normalize",
                                   "not",
                                   "notEqual",
                                   "outset",
                                   "pixel1",
                                   "pixel2",
                                   "pixel3",
                                   "pixel4",
                                   "pow",
                                   "radians",
                                   "reflect",
                                   "refract",
                                   "sample",
                                   "sampleLinear",
                                   "sampleNearest",
                                   "sign",
                                   "sin",
                                   "smoothStep",
                                   "smoothstep",
                                   "sqrt",
                                   "step",
                                   "tan",
                                   "transform",
                                   "vec2",
                                   "vec3",
                                   "vec4",
                                   "vlmk_union",
                                   "if",
                                   "while",
                                   "return",
                                   "greaterThanEqual",
                                   "lessThanEqual",
                                   "matrixCompMult",
                                   "pixelAspectRatio",
                                   "pixelSize"};
  return kFunctions;
}

template <std::size_t N>
bool isOneOf(const BodyWords& words, std::size_t i, const std::array<std::string_view, N>& texts) {
  return i < words.size() && std::find(texts.begin(), texts.end(), words[i].text) != texts.end();
}

bool mayPrecedeRead(const BodyWords& words, std::size_t i) {
  static constexpr auto kTexts = std::to_array<std::string_view>(
      {"=",  "+=", "-=", "*=", "/=", "+", "-", "*", "/", "<",     ">",
       "<=", ">=", "&&", "||", "!",  "?", ":", "(", ",", "return"});
  return isOneOf(words, i, kTexts);
}

bool mayFollowRead(const BodyWords& words, std::size_t i) {
  static constexpr auto kTexts = std::to_array<std::string_view>(
      {"+", "-", "*", "/", "<", ">", "<=", ">=", "&&", "||", "?", ":", ")", ",", ";"});
  return isOneOf(words, i, kTexts);
}

/// Names that the texts around the body have too.
bool isReserved(std::string_view name) {
  return name.starts_with("vlmk_") || name.starts_with("_vlmk") || name.starts_with("vlmg_") ||
         name.starts_with("_vlmg") || name.starts_with("gl_");
}

bool isDeclaration(const BodyWords& words, std::size_t i) {
  const std::size_t type = BodyWords::before(i);
  return (words.is(type, "float2") || words.is(type, "vec2")) && words.is(i + 1, "=") &&
         isOutCoordCall(words, i + 2) && words.is(i + 5, ";");
}

/// Whether the variable at `i` is only read there. Parentheses around it alone, also those of a
/// call, are looked at from outside: behind them it could still be written.
bool isRead(const BodyWords& words, std::size_t i, const Texts& ownFunctions) {
  std::size_t first = i;
  std::size_t last = i;
  while (words.is(last + 1, ".") && words.isIdentifier(last + 2))
    last += 2;
  for (int depth = 0; depth < kGroupLimit; ++depth) {
    if (!mayPrecedeRead(words, BodyWords::before(first)) || !mayFollowRead(words, last + 1)) {
      return false;
    }
    // Without a value of its own, a name behind a comma may be one that is declared.
    if (words.is(BodyWords::before(first), ",") && words.is(last + 1, ";")) return false;
    const std::size_t open = words[first].open;
    if (open == kNoWord) {
      return !words.is(BodyWords::before(first), ",") && !words.is(last + 1, ",");
    }
    const std::string_view callee = words.callee(open);
    if (!callee.empty()) return pureFunctions().count(callee) || ownFunctions.count(callee);
    if (words[open].close == kNoWord) return false;
    first = open;
    last = words[open].close;
  }
  return false;
}

}  // namespace

bool isOutCoordCall(const BodyWords& words, std::size_t i) {
  return words.is(i, "outCoord") && words.is(i + 1, "(") && words.is(i + 2, ")");
}

Texts positionVariables(const BodyWords& words, const Texts& ownFunctions) {
  std::unordered_map<std::string_view, int> declarations;
  Texts changed;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const Word& word = words[i];
    const bool isMacro = word.inPreprocessor && word.text == "define";
    if (isMacro || word.text == "\\" || word.text == "out" || word.text == "inout") return {};
    if (word.kind != TokenKind::Identifier) continue;
    if (isDeclaration(words, i)) {
      ++declarations[word.text];
    } else if (word.inPreprocessor || !isRead(words, i, ownFunctions)) {
      changed.insert(word.text);
    }
  }
  Texts positions;
  for (const auto& [name, count] : declarations) {
    if (count == 1 && changed.count(name) == 0 && !isReserved(name)) positions.insert(name);
  }
  return positions;
}

}  // namespace vellumtide
