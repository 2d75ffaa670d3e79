#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "glsl/prelude.h"
#include "glsl/shader_text.h"

namespace vellumtide {
namespace {

struct Texts {
  std::string vertex = "old";
  std::string fragment = "old";
};

Texts generate(const pbKernelInfo& kernel, const NodeShaderInputs* node, ChannelOrder order) {
  Texts texts;
  EXPECT_EQ(generateShaders(kernel, node, order, texts.vertex, texts.fragment), 0);
  return texts;
}

std::string join(std::initializer_list<std::string_view> pieces) {
  std::string text;
  for (const std::string_view piece : pieces)
    text += piece;
  return text;
}

pbKernelInfo carryingKernel() {
  pbKernelInfo kernel;
  kernel.inputs.assign(3, {});
  kernel.output = {pbElementType::Pixel4, "dst"};
  kernel.dependents = {{pbElementType::Int, "n"},
                       {pbElementType::Float2, "p"},
                       {pbElementType::Bool2, "_d"},
                       {pbElementType::None, "u"}};
  kernel.body = "BODY";
  return kernel;
}

TEST(ShaderText, StandAloneKernel) {
  const Texts texts = generate(carryingKernel(), nullptr, 3);
  const std::string common =
      join({"#define parameter uniform\n#define vlmk__INPUT_MAX 3\n#define vlmk_SWIZZLE_IN .ragb\n",
            typePrelude(), "\n", functionPrelude(),
            "\n\nBODY\n\nvarying float vlmk_n;\nvarying vec2 _vlmk_d;\n\nvoid main(void)\n{\n"});
  EXPECT_EQ(texts.vertex,
            join({"\n#define vlmk_VERTEX_SHADER\n", common,
                  "\tevaluateDependents();\n\tvlmk_n = float(n);\n\t_vlmk_d = vec2(_d);\n"
                  "\tvlmk_vertexPosition = gl_Vertex;\n\tgl_Position = ftransform();\n}\n"}));
  EXPECT_EQ(texts.fragment, join({common,
                                  "\tn = int(vlmk_n);\n\t_d = bool2(_vlmk_d);\n"
                                  "\tevaluatePixel();\n\tgl_FragColor = dst.rbag;\n}\n"}));
}

TEST(ShaderText, GraphNode) {
  const std::vector<pbParameter> parameters{{pbElementType::Float, "_amount"},
                                            {pbElementType::Float3x3, "m"}};
  const std::string prelude = join({typePrelude(), "\n", functionPrelude(), "\n\nBODY\n\n"});
  const std::string uniforms = "uniform float _vlmg_amount;\nuniform float3x3 vlmg_m;\n";
  const std::string position =
      "\tvlmk_vertexPosition = gl_Vertex;\n\tgl_Position = ftransform();\n}\n";

  const NodeShaderInputs plain{parameters, {}};
  pbKernelInfo bare;
  bare.body = "BODY";
  const Texts texts = generate(bare, &plain, 24);
  const std::string common =
      join({"#define parameter\n#define vlmk__INPUT_MAX 1\n", prelude, uniforms,
            "void evaluateParameters(){}\n\nvoid main(void)\n{\n"});
  EXPECT_EQ(texts.vertex, join({"\n#define vlmk_VERTEX_SHADER\n", common, position}))
      << "without dependents the vertex shader calls nothing";
  EXPECT_EQ(texts.fragment, join({common,
                                  "\tevaluateParameters();\n\tevaluatePixel();\n"
                                  "\tgl_FragColor = ;\n}\n"}))
      << "an order outside the table writes no swizzle";

  const NodeShaderInputs withFunction{parameters, "FUNCTION"};
  const Texts carrying = generate(carryingKernel(), &withFunction, 0);
  const std::string own = join(
      {"varying float vlmk_n;\nvarying vec2 _vlmk_d;\n", uniforms, "FUNCTION\nvoid main(void)\n{\n",
       "\tevaluateParameters();\n\tevaluateDependents();\n\tvlmk_n = float(n);\n"
       "\t_vlmk_d = vec2(_d);\n",
       position});
  EXPECT_TRUE(carrying.vertex.ends_with(own)) << carrying.vertex;
}

TEST(ShaderText, InputCountIsOneDigitOrNothing) {
  const char* lines[] = {"1", "1", "2", "3", "4", "5", "6", "7", "8", "", ""};
  for (std::size_t count = 0; count < std::size(lines); ++count) {
    pbKernelInfo kernel;
    kernel.inputs.assign(count, {});
    const std::string text = generate(kernel, nullptr, 0).fragment;
    const std::string line = join({"\n#define vlmk__INPUT_MAX ", lines[count], "\n"});
    EXPECT_NE(text.find(line), std::string::npos) << count;
  }
}

TEST(ShaderText, SwizzlesAreEveryPermutationAndItsInverse) {
  const std::string channels = "rgba";
  std::vector<std::string_view> seen;
  for (ChannelOrder order = 0; order < kChannelOrderCount; ++order) {
    const std::string_view in = inputSwizzle(order).substr(1);
    const std::string_view out = outputSwizzle(order).substr(1);
    ASSERT_TRUE(in.size() == 4 && out.size() == 4) << order;
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(in[channels.find(out[i])], channels[i]) << order;
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), in), 0) << order;
    seen.push_back(in);
  }
  EXPECT_EQ(inputSwizzle(18), ".gbar");
  EXPECT_EQ(inputSwizzle(-1), "");
}

/// The preludes are a contract to the last blank: a change must be meant.
TEST(ShaderText, PreludesAreUnchanged) {
  const auto hash = [](std::string_view text) {
    std::uint64_t value = 14695981039346656037u;
    for (const char c : text)
      value = (value ^ static_cast<unsigned char>(c)) * 1099511628211u;
    return value;
  };
  EXPECT_EQ(hash(typePrelude()), 9918226669685017u);
  EXPECT_EQ(hash(functionPrelude()), 8522154610404929169u);
}

}  // namespace
}  // namespace vellumtide
