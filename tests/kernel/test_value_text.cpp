#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "kernel/pbk_parser.h"
#include "kernel/value_text.h"

namespace vellumtide {
namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();

/// The components that a type has, as numbers.
std::vector<double> components(const ValueCells& cells, pbElementType type) {
  std::vector<double> result;
  const BaseKind kind = baseKind(type);
  for (std::size_t i = 0; i < static_cast<std::size_t>(componentCount(type)); ++i) {
    if (kind == BaseKind::Int) result.push_back(cells.intAt(i));
    if (kind == BaseKind::Float) result.push_back(cells.floatAt(i));
    if (kind == BaseKind::Bool) result.push_back(cells.boolAt(i));
    if (kind == BaseKind::None) result.push_back(cells == ValueCells() ? 0 : 1);
  }
  return result;
}

struct ValueCase {
  const char* type;
  const char* text;
  std::vector<double> expected;
};

TEST(ValueText, PlainForm) {
  const ValueCase cases[] = {
      {"int", "-3", {-3}},
      {"int", "2147483648", {2147483647}},
      {"int", "-99999999999999999999", {-2147483648.0}},
      {"int2", " 1, -2", {1, -2}},
      {"int2", "1 ,2", {1, 0}},
      {"int3", "1,2.5,3", {1, 2, 0}},
      {"int4", "1,,3,4", {1, 0, 0, 0}},
      {"int2", "0x10,3", {0, 0}},
      {"float2", "1.5,2", {1.5, 2}},
      {"float2", "+1.5e1,\t-.5E-1", {15, static_cast<double>(-0.05f)}},
      {"float2", "1e,2", {0, 0}},
      {"float2", "0x1.8p1,2.", {3, 2}},
      {"float2", ".,2", {0, 0}},
      {"float2", "1e999,1e-999", {kInf, 0}},
      {"float3", "-INFINITY,inf,1", {-kInf, kInf, 1}},
      {"float2", "infin,1", {0, 0}},
      {"float2x2", "1,2,3,4,5", {1, 2, 3, 4}},
      {"pixel3", "1,2,3", {1, 2, 3}},
      {"bool", "true", {1}},
      {"bool", " true", {0}},
      {"bool", "True", {0}},
      {"bool3", "true,false,true", {1, 0, 1}},
      {"bool3", "true, true,true", {1, 0, 0}},
      {"bool2", "true, \ttrue x", {1, 1}},
      {"bool2", "true,true,true", {1, 0}},
      {"bool2", ",true", {0, 0}},
      {"float4", "", {0, 0, 0, 0}},
      {"image2", "1,1", {0, 0}},
  };
  for (const ValueCase& c : cases) {
    const pbElementType type = typeFromName(c.type);
    EXPECT_EQ(components(valueFromText(c.text, type), type), c.expected) << c.type << " " << c.text;
  }
  EXPECT_TRUE(std::isnan(valueFromText("nan", pbElementType::Float).floatAt(0)));
}

TEST(ValueText, KernelForm) {
  const ValueCase cases[] = {
      {"float2", "float2(-1.5, 2.0)", {-1.5, 2}},
      {"int", "-3", {-3}},
      {"int2", "int2(-1, 4)", {-1, 4}},
      {"int2", "- - 1 + 4", {-1, 4}},
      {"int2", "--1, -\",\"4", {1, -4}},
      {"int", "2.7", {2}},
      {"int", "-2147483648", {-2147483648.0}},
      {"int", "2147483648u", {2147483647}},
      {"int2", "true, 0x1F", {1, 0}},
      {"float3", "float3(1,2,3,4)", {1, 2, 3}},
      {"float2", "1e2 1.5f", {1, 1.5}},
      {"float2x2", "float2x2(true, .5, false, -0x1F)", {1, 0.5, 0, 0}},
      {"float", "1. /* 2 */", {1}},
      {"bool2", "bool2(true, false)", {1, 0}},
      {"bool4", "0.1, 0, -2, True", {1, 0, 1, 0}},
      {"bool", "\"; true\"", {1}},
      {"string", "1", {}},
  };
  for (const ValueCase& c : cases) {
    const std::string source = std::string("kernel k{parameter ")
                                   .append(c.type)
                                   .append(" p<maxValue:")
                                   .append(c.text)
                                   .append(";>;}");
    pbKernelInfo kernel;
    PBKParser(source).parse(kernel);
    ASSERT_EQ(kernel.parameters.size(), 1u) << c.text;
    const pbParameter& p = kernel.parameters[0];
    EXPECT_TRUE(p.maxValue.isSet && !p.minValue.isSet && !p.defaultValue.isSet) << c.text;
    EXPECT_EQ(components(p.maxValue.cells, p.type), c.expected) << c.type << " " << c.text;
  }
}

}  // namespace
}  // namespace vellumtide
