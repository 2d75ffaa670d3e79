#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "kernel/meant_value.h"
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

TEST(ValueText, WhatIsMeant) {
  const ValueCase cases[] = {
      {"float2", "float2(200.0)", {200, 200}},
      {"float3", "0.5", {0.5, 0.5, 0.5}},
      {"float2x2", "float2x2(2.0)", {2, 0, 0, 2}},
      {"float3x3", "3", {3, 0, 0, 0, 3, 0, 0, 0, 3}},
      {"float4", "float4(float3(1.0), 0.5)", {1, 1, 1, 0.5}},
      {"float2", "float2(float4(1, 2, 3, 4))", {1, 2}},
      {"float4", "float2(7.0)", {7, 7, 0, 0}},
      {"float", "105/255", {static_cast<double>(105 / 255.0f)}},
      {"float3", "float3(255.0, 128, 0) / 255.0", {1, static_cast<double>(128 / 255.0f), 0}},
      {"float2", "-(1. + .5)*float2(2, -4e0) - +1.0", {-4, 5}},
      {"float", "1e-3", {static_cast<double>(1e-3f)}},
      {"float", "1.5E+1f", {15}},
      {"float", "\n( ( 2 ) )\t", {2}},
      {"float", "1e999", {kInf}},
      {"int", "7/2*2", {6}},
      {"int", "7.0/2*2", {7}},
      {"int", "1e12", {2147483647}},
      {"int2", "int2(0x1F, -0xau)", {31, -10}},
      {"bool4", "bool4(true)", {1, 1, 1, 1}},
      {"bool2", "bool2(0.5, 1 - 1)", {1, 0}},
      {"float2", "float2(true, false)", {1, 0}},
      {"int3", "int3(int(2.7), 1.9, -1.9)", {2, 1, -1}},
      {"pixel3", "pixel3(1, 2, 3, 4)", {1, 2, 3}},
  };
  for (const ValueCase& c : cases) {
    const pbElementType type = typeFromName(c.type);
    const auto meant = meantValue(c.text, type);
    ASSERT_TRUE(meant) << c.type << " " << c.text;
    EXPECT_EQ(components(*meant, type), c.expected) << c.type << " " << c.text;
  }
}

// The cells count for these, as they do where both readings agree.
TEST(ValueText, NothingElseIsMeant) {
  const auto isNothing = [](const std::string& text) {
    for (const auto type : {pbElementType::Float4, pbElementType::Int, pbElementType::Bool2})
      EXPECT_FALSE(meantValue(text, type)) << text.substr(0, 40);
  };
  const char* const values[] = {
      "",    ",",         "float2(",   "float2(1", "1)",        "()",    "float2()", "1 2",
      "1 +", "* 1",       "1//2",      "1,,2",     "PI",        "1.0.0", "1e",       "1x",
      "0x",  "0xg",       "1/0",       "1/(2-2)",  "true + 1",  "-true", "!true",    "inf",
      "nan", "0 * 1e999", "image4(1)", "vec2(1)",  "Float2(1)", "\"1\"", "#1"};
  for (const char* text : values)
    isNothing(text);
  for (const char* text : {"1e999 - 1e999", "float2(1) + float3(1)", "float2x2(1) * float2x2(2)",
                           "float2x2(1) + float4(1)"})
    isNothing(text);
  const std::string deep(100'000, '(');
  isNothing(std::string("1\0", 2));
  isNothing(deep);
  isNothing(deep + "1" + std::string(deep.size(), ')'));
  isNothing("1" + std::string(kMeantValueLimit, ' '));
  isNothing(std::string(33, '(') + "1" + std::string(33, ')'));
  EXPECT_TRUE(meantValue(std::string(32, '(') + "1" + std::string(32, ')'), pbElementType::Int));
  EXPECT_FALSE(meantValue("1", pbElementType::String));
  for (const char* same : {"float2(0.1, -0.7)", "float2(1e999, 2)", "1.5, 0.3333333333"}) {
    const ValueCells cells =
        valueFromText(std::string_view(same).substr(*same == 'f' ? 7 : 0), pbElementType::Float2);
    EXPECT_FALSE(valueOf(cells, same, pbElementType::Float2).meant) << same;
  }
}

TEST(ValueText, MeantValuesStandBesideTheCells) {
  const std::string source =
      "kernel k{parameter float2 p<minValue : /* no */ float2(200.0)\n; maxValue: 4.0 * FOUR;\n"
      "defaultValue: -// 1e0\n2e0; aePointRelativeDefaultValue: float2(0.5);>, q;}";
  pbKernelInfo kernel;
  PBKParser(source).parse(kernel);
  ASSERT_EQ(kernel.parameters.size(), 2u);
  const pbParameter& p = kernel.parameters[0];
  EXPECT_EQ(components(p.minValue.cells, p.type), (std::vector<double>{200, 0}));
  EXPECT_EQ(components(p.minValue.meantCells(), p.type), (std::vector<double>{200, 200}));
  EXPECT_EQ(p.minValue.place, source.find("float2(200.0)"));
  EXPECT_FALSE(p.maxValue.meant);
  EXPECT_EQ(components(p.defaultValue.cells, p.type), (std::vector<double>{-2, 0}));
  EXPECT_EQ(components(p.defaultValue.meantCells(), p.type), (std::vector<double>{-2, -2}));
  EXPECT_EQ(p.defaultValue.place, source.find("-//"));
  EXPECT_EQ(p.aePointRelativeDefaultValue.y, 0);
  EXPECT_EQ(p.aePointRelativeDefaultValue.meantPlace(), (std::array{0.5f, 0.5f}));
  // A value that goes on and on is the cells' alone, in memory that does not grow with it.
  const std::string endless =
      "kernel k{parameter float p<maxValue: 1e2 " + std::string(1 << 20, '+') + "1;>;}";
  pbKernelInfo other;
  PBKParser(endless).parse(other);
  ASSERT_EQ(other.parameters.size(), 1u);
  EXPECT_FALSE(other.parameters[0].maxValue.meant);
}

}  // namespace
}  // namespace vellumtide
