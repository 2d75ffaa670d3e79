// What a kernel sees beside its pixels: controls, dependents, regions, sizes, other layers.
#include <gtest/gtest.h>

#include "tests/support/pictures.h"
#include "tests/support/session.h"

namespace vellumtide::end_to_end {
namespace {

// A kernel that writes an expression, and what that gives once some controls are set; the others
// keep what the instance has taken from the program.
struct Value {
  const char* declarations;
  const char* expression;
  std::vector<std::pair<const char*, std::vector<double>>> set;
  Rgba expected;
};

// clang-format off
const Value kValues[] = {
    {"parameter bool p;", "float4(p ? 1.0 : 0.25)", {{"p", {1}}}, {1, 1, 1, 1}},
    {"parameter bool4 p <defaultValue: bool4(true, false, false, true);>;", "float4(p)",
     {{"p y", {1}}, {"p w", {0}}}, {1, 1, 0, 0}},
    {R"(parameter int p <aeUIControl: "aePopup"; aePopupString: "a|b|c";>;)", "float4(float(p))",
     {{"p", {3}}}, {2, 2, 2, 2}},
    {R"(parameter int p <parameterType: "enum"; enumValues: "a|b|c"; defaultValue: 1;>;)",
     "float4(float(p))", {}, {1, 1, 1, 1}},
    {R"(parameter int p <aeUIControl: "aePopup"; defaultValue: 9;>;)", "float4(float(p))",
     {{"p", {1}}}, {0, 0, 0, 0}},
    {"parameter int p;", "float4(float(p))", {{"p", {-77}}}, {-77, -77, -77, -77}},
    {"parameter int4 p <defaultValue: int4(1, -2, 300, 4);>;", "float4(p)", {{"p w", {-32767}}},
     {1, -2, 300, -32767}},
    {"parameter float p <defaultValue: 0.75;>;", "float4(p)", {}, {0.75, 0.75, 0.75, 0.75}},
    {"parameter float2 p, q;", "float4(p, q)", {{"p y", {1.5}}, {"q x", {-1234.0625}}},
     {0, 1.5, -1234.0625, 0}},
    {R"(parameter pixel3 p <displayName: "tint"; defaultValue: float3(-0.5, 2.0, 7.0);>;)",
     "float4(p, 1.0)", {{"tint z", {0.125}}}, {-0.5, 2, 0.125, 1}},
    {R"(parameter float p <aeUIControl: "aePercentSlider";>;
        parameter float q <aeUIControl: "aeOneChannelColor";>;)",
     "float4(p, q, 0.0, 0.0)", {{"p", {62.5}}, {"q", {0.5}}}, {62.5, 0.5, 0, 0}},
    {R"(parameter float p <aeUIControl: "aeAngle"; defaultValue: 45.5;>;
        parameter float q <parameterType: "angleDegrees";>;)",
     "float4(p, q, 0.0, 0.0)", {{"q", {-720.25}}}, {45.5, -720.25, 0, 0}},
    {R"(parameter float2 p <aeUIControl: "aePoint";>;
        parameter float2 q <parameterType: "position";>;)",
     "float4(p, q)", {{"p", {3.5, -7.25}}, {"q", {1e3, 0}}}, {3.5, -7.25, 1000, 0}},
    {R"(parameter float2 p <aeUIControl: "aePoint";
          aePointRelativeDefaultValue: float2(0.25, 0.5);>;
        parameter float2 q <parameterType: "position"; defaultValue: float2(3.0, 2.0);>;)",
     "float4(p, q)", {}, {2, 3, 3, 2}},
    {R"(parameter float4 p <aeUIControl: "aeColor";>;)", "p", {{"p", {0.2, 0.4, 0.6, 0.8}}},
     {0.2, 0.4, 0.6, 0.8}},
    {R"(parameter pixel3 p <aeUIControl: "aeColor"; defaultValue: float3(0.2, 0.0, 1.0);>;)",
     "float4(p, 0.0)", {}, {0.2, 0, 1, 0}},
    {R"(parameter float3 p <parameterType: "colorRGB";>;
        parameter float4 q <parameterType: "colorRGBA";>;)",
     "float4(p.rg, q.ba)", {{"p", {1, 0.6, 0, 0.2}}, {"q", {0, 0, 0.4, 0.8}}}, {1, 0.6, 0.4, 0.8}},
    {"parameter float2x2 p;", "float4(p[0], p[1])", {{"p [0][1]", {2}}, {"p [1][0]", {3}}},
     {0, 2, 3, 0}},
    {"parameter float3x3 p;", "float4(p[0].y, p[1].x, p[2].yz)",
     {{"p [0][1]", {2}}, {"p [2][1]", {3}}, {"p [2][2]", {4}}}, {2, 0, 3, 4}},
    {"parameter float4x4 p <defaultValue: float4x4(0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15);>;",
     "float4(p[3].x, p[0].w, p[2].yz)", {}, {12, 3, 9, 10}},
    {"parameter int p <defaultValue: 3;>; dependent int n; dependent bool2 _b; dependent float2 f;"
     "void evaluateDependents() { n = p * 2; _b = bool2(p > 2, p > 3); f = float2(p, 0.5); }",
     "float4(float(n), _b, f.x * f.y)", {}, {6, 1, 0, 1.5}},
    {"dependent int3 n; dependent float3x3 m;"
     "void evaluateDependents() { n = int3(-1, 0, 70000); m = float3x3(2.0); m[1].x = 5.0; }",
     "float4(n, m[1].x)", {}, {-1, 0, 70000, 5}},
    {"", "union(float4(0, 0, 2, 2), float4(1, -1, 3, 1))", {}, {0, -1, 3, 2}},
    {"", "intersect(float4(0, 0, 2, 2), float4(1, -1, 3, 1))", {}, {1, 0, 2, 1}},
    {"", "outset(float4(2, 3, 4, 5), float2(1, 2))", {}, {1, 1, 5, 7}},
    {"", "inset(float4(0, 0, 9, 8), float2(1, 2))", {}, {1, 2, 8, 6}},
    {"", "transform(float2x2(2, 0, 0, 3), float4(1, 2, 3, 4))", {}, {2, 6, 6, 12}},
    {"", "transform(float3x3(2, 0, 0, 0, 3, 0, 1, 5, 1), float4(1, 2, 3, 4))", {}, {1, 1, 5, 7}},
    {"", "float4(isEmpty(nowhere()), isEmpty(bounds(float4(0, 0, 1, 1))), dod(src).z,"
         "isEmpty(everywhere()))",
     {}, {1, 0, 0, 1}},
};
// clang-format on

TEST(KernelValues, EveryKindOfControlDependentAndRegion) {
  Session session;
  const World picture(8, 6, kFloat);
  for (const Value& value : kValues) {
    SCOPED_TRACE(std::string(value.declarations) + value.expression);
    const std::string statement = std::string("dst = ") + value.expression + ";";
    Effect& effect = session.kernel(picture, kernelText(value.declarations, statement));
    ASSERT_EQ(effect.title, "VTD: Sample");
    for (const auto& [label, numbers] : value.set)
      setControl(effect, label, numbers);
    const World frame = session.render(effect, {.format = kFloat});
    EXPECT_EQ(differences(picture, frame, everywhere(value.expected)), "");
  }
}

TEST(KernelValues, ControlsAreReadAtTheTimeOfTheFrame) {
  Session session;
  const World picture(3, 2, kFloat);
  Effect& effect = session.kernel(picture, kernelText("parameter float p;", "dst = float4(p);"));
  const PF_ParamIndex index = effect.findShown("p")->index;
  effect.setNumberAt(index, {0, 24}, 1);
  effect.setNumberAt(index, {48, 24}, 2);
  for (const auto& [time, value] : {std::pair{0, 1.0}, {47, 1.0}, {48, 2.0}}) {
    const World frame = session.render(effect, {.format = kFloat, .time = time});
    EXPECT_EQ(differences(picture, frame, everywhere({value, value, value, value})), "");
  }
}

// Coordinates and points are those of full resolution, and sizes those of the layers' pixels.
TEST(KernelValues, ResolutionAndPixelAspect) {
  Session session;
  const World picture(21, 10, kFloat);
  Effect& effect = session.kernel(
      picture,
      kernelText("input image4 a; input image4 b;"
                 "parameter float2 p <aeUIControl: \"aePoint\"; defaultValue: float2(7.0, 3.0);>;",
                 "dst = outCoord().x > 12.0 ? float4(pixelSize(1.0), pixelAspectRatio(1),"
                 "pixelSize(a).x) : float4(outCoord(), p);"));
  Layer& other = session.layer(World(4, 4, kFloat));
  other.item()->pixelAspect = {2, 1};
  setLayer(effect, "b", &other);
  effect.layer().item()->pixelAspect = {10, 11};
  for (const A_u_long scaleX : {1, 2, 3}) {
    for (const A_u_long scaleY : {1, 2, 4}) {
      const World frame = session.render(
          effect, {.format = kFloat, .downsampleX = {1, scaleX}, .downsampleY = {1, scaleY}});
      EXPECT_EQ(frame.width(), static_cast<int>((21 + scaleX - 1) / scaleX));
      const Formula expected = [scaleX, scaleY](const Rgba&, int x, int y) {
        const double atX = (x + 0.5) * scaleX;
        return atX > 12 ? Rgba{10.0 / 11, 1, 2, 1} : Rgba{atX, (y + 0.5) * scaleY, 7, 3};
      };
      EXPECT_EQ(differences(picture, frame, expected), "") << scaleX << ", " << scaleY;
    }
  }
  other.item().reset();  // a layer without a source has square pixels
  EXPECT_NEAR(pixelAt(session.render(effect, {.format = kFloat}), 20, 0)[2], 1, 1e-6);
}

}  // namespace
}  // namespace vellumtide::end_to_end
