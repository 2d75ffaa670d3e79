#include "nodes/parameter_uniform.h"

namespace vellumtide {
namespace {

using Floats = std::array<float, ValueCells::kCellCount>;

void setInts(GLint location, int count, const std::array<std::int32_t, 16>& v) {
  if (count == 1) glUniform1i(location, v[0]);
  if (count == 2) glUniform2i(location, v[0], v[1]);
  if (count == 3) glUniform3i(location, v[0], v[1], v[2]);
  if (count == 4) glUniform4i(location, v[0], v[1], v[2], v[3]);
}

void setFloats(GLint location, int count, const Floats& v) {
  if (count == 1) glUniform1f(location, v[0]);
  if (count == 2) glUniform2f(location, v[0], v[1]);
  if (count == 3) glUniform3f(location, v[0], v[1], v[2]);
  if (count == 4) glUniform4f(location, v[0], v[1], v[2], v[3]);
}

void setBools(GLint location, int count, const ValueCells& value) {
  std::array<std::int32_t, 16> components{};
  for (int i = 0; i < count; ++i) {
    const auto at = static_cast<std::size_t>(i);
    components[at] = value.boolAt(at) ? 1 : 0;
  }
  setInts(location, count, components);
}

void setByElementType(GLint location, pbElementType type, const ValueCells& value) {
  const Floats floats = value.floats();
  switch (type) {
    case pbElementType::Float2x2:
      return glUniformMatrix2fv(location, 1, GL_FALSE, floats.data());
    case pbElementType::Float3x3:
      return glUniformMatrix3fv(location, 1, GL_FALSE, floats.data());
    case pbElementType::Float4x4:
      return glUniformMatrix4fv(location, 1, GL_FALSE, floats.data());
    default:
      break;
  }
  const int count = componentCount(type);
  switch (baseKind(type)) {
    case BaseKind::Int:
      return setInts(location, count, value.ints());
    case BaseKind::Float:
      return setFloats(location, count, floats);
    case BaseKind::Bool:
      return setBools(location, count, value);
    case BaseKind::None:
      return;
  }
}

void setColor(GLint location, pbElementType type, const Floats& floats) {
  if (type == pbElementType::Float4 || type == pbElementType::Pixel4) {
    glUniform4fv(location, 1, floats.data());
  } else if (type == pbElementType::Float3 || type == pbElementType::Pixel3) {
    glUniform3fv(location, 1, floats.data());
  }
}

void setByParameterType(GLint location, const pbParameter& parameter, const ValueCells& value) {
  const Floats floats = value.floats();
  switch (parameter.parameterType) {
    case pbParameterType::AngleDegrees:
      return glUniform1f(location, floats[0]);
    case pbParameterType::Position:
      return glUniform2f(location, floats[0], floats[1]);
    case pbParameterType::ColorRGB:
      return glUniform3fv(location, 1, floats.data());
    case pbParameterType::ColorRGBA:
      return glUniform4fv(location, 1, floats.data());
    case pbParameterType::Enum:
      return glUniform1i(location, value.intAt(0));
    default:
      return setByElementType(location, parameter.type, value);
  }
}

}  // namespace

void setParameterUniform(GLint location, const pbGraphParameter& record) {
  const ValueCells& value = record.value;
  switch (record.parameter.aeUIControl) {
    case pbUIControl::Popup:
      return glUniform1i(location, value.intAt(0));
    case pbUIControl::Angle:
    case pbUIControl::PercentSlider:
    case pbUIControl::OneChannelColor:
      return glUniform1f(location, value.floatAt(0));
    case pbUIControl::Point:
      return glUniform2f(location, value.floatAt(0), value.floatAt(1));
    case pbUIControl::Color:
      return setColor(location, record.parameter.type, value.floats());
    case pbUIControl::None:
      break;
  }
  setByParameterType(location, record.parameter, value);
}

}  // namespace vellumtide
