#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kernel/element_type.h"
#include "kernel/fixed_text.h"
#include "kernel/limits.h"
#include "kernel/parameter_kind.h"
#include "kernel/value.h"

namespace vellumtide {

/// A typed name: an input image, the output pixel or a dependent.
class pbVariable {
 public:
  pbVariable() = default;
  pbVariable(pbElementType variableType, std::string_view variableName)
      : type(variableType), name(variableName), sourceName(variableName) {}
  pbVariable(const pbVariable&) = default;
  pbVariable(pbVariable&&) = default;
  pbVariable& operator=(const pbVariable&) = default;
  pbVariable& operator=(pbVariable&&) = default;
  virtual ~pbVariable() = default;

  pbElementType type = pbElementType::None;
  NameText name;

  /// The name as the shader text has it, uncut. A graph's parameters, whose uniforms are named
  /// after the cut name, keep that here.
  std::string sourceName;
};

/// A default position as a fraction of the layer's size; the rest as in pbValue.
struct RelativePoint {
  bool isSet = false;
  float x = 0;
  float y = 0;
  std::optional<std::array<float, 2>> meant = std::nullopt;
  std::size_t place = 0;

  std::array<float, 2> meantPlace() const { return meant.value_or(std::array{x, y}); }
};

/// Takes both parts from a set value of type float2.
inline RelativePoint relativePointOf(const pbValue& value) {
  const auto partsOf = [](const ValueCells& cells) {
    return std::array{cells.floatAt(0), cells.floatAt(1)};
  };
  const auto [x, y] = partsOf(value.cells);
  RelativePoint point{true, x, y};
  if (value.meant) point.meant = partsOf(*value.meant);
  point.place = value.place;
  return point;
}

/// A program parameter with its metadata. The two entry lists are kept as written, unsplit.
class pbParameter : public pbVariable {
 public:
  using pbVariable::pbVariable;

  pbValue defaultValue;
  pbValue minValue;
  pbValue maxValue;
  pbParameterType parameterType = pbParameterType::None;
  pbUIControl aeUIControl = pbUIControl::None;
  NameText displayName;
  NameText aeDisplayName;
  RelativePoint aePointRelativeDefaultValue;
  std::string enumValues;
  std::string aePopupString;
};

/// What a kernel or a graph says about itself.
class pbMetadata {
 public:
  pbMetadata() = default;
  pbMetadata(const pbMetadata&) = default;
  pbMetadata(pbMetadata&&) = default;
  pbMetadata& operator=(const pbMetadata&) = default;
  pbMetadata& operator=(pbMetadata&&) = default;
  virtual ~pbMetadata() = default;

  NameText name;
  std::int32_t languageVersion = 1;
  NameText nameSpace;
  NameText vendor;
  std::int32_t version = 1;
  std::string description;
};

/// One parsed kernel. `body` is its source from just behind the opening brace, rewritten for the
/// shader prelude. A kernel that goes beyond a limit holds nothing else.
class pbKernelInfo : public pbMetadata {
 public:
  std::vector<pbVariable> inputs;
  pbVariable output;
  std::vector<pbVariable> dependents;
  std::vector<pbParameter> parameters;
  std::string body;
  Limit beyond = Limit::None;
};

}  // namespace vellumtide
