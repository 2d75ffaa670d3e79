// The effect's panel after a program is loaded.
#include <gtest/gtest.h>

#include "tests/support/pictures.h"
#include "tests/support/session.h"

namespace vellumtide::end_to_end {
namespace {

const char* const kCopy = "dst = sampleNearest(src, outCoord());";

World picture() {
  return World(40, 20, PF_PixelFormat_ARGB32);
}

// "4 flag; 24 mode": index and label of the shown controls, from the `first`-th on.
std::string shown(const Effect& effect, std::size_t first = 0) {
  const auto controls = effect.shownControls();
  std::string text;
  for (std::size_t i = first; i < controls.size(); ++i) {
    text += (i > first ? "; " : "") + std::to_string(controls[i]->index) + " " + controls[i]->label;
  }
  return text;
}

// The second name is cut inside its last character.
const char* const kDeclarations = R"(
  input image4 src; input image4 matte;
  parameter bool flag <aeDisplayName: "Flag"; defaultValue: true;>;
  parameter int mode <aeUIControl: "aePopup"; aePopupString: "one|two|three"; defaultValue: 2;>;
  parameter int2 steps <minValue: int2(-5, 0); maxValue: int2(5, 900);>;
  parameter float abcdefghijklmnopqrstuvwxyz_abcdefghijklm;
  parameter float2 pair <displayName: "abcdefghijklmnopqrstuvwxyz01äö";
    minValue: float2(-1.0, 2.0); maxValue: float2(1.0, 1.0); defaultValue: float2(0.5, 9.0);>;
  parameter float2 at <aeUIControl: "aePoint"; aePointRelativeDefaultValue: float2(0.25, 1.0);>;
  parameter float turn <parameterType: "angleDegrees"; defaultValue: 30.0;>;
  parameter float3 tint <parameterType: "colorRGB"; defaultValue: float3(0.2, 0.4, 0.0);>;
  parameter float2x2 m;)";

TEST(Panel, ControlsMirrorTheProgram) {
  Session session;
  Effect& effect = session.kernel(picture(), kernelText(kDeclarations, kCopy));
  EXPECT_EQ(effect.title, "VTD: Sample");
  EXPECT_EQ(effect.optionsButton, "PB Info");
  EXPECT_EQ(shown(effect),
            "1 matte; 4 Flag; 24 mode; 34 steps x; 35 steps y; 44 abcdefghijklmnopqrstuvwxyz_abcd; "
            "45 abcdefghijklmnopqrstuvwxyz01 x; 46 abcdefghijklmnopqrstuvwxyz01 y; 47 m [0][0]; "
            "48 m [0][1]; 49 m [1][0]; 50 m [1][1]; 94 at; 104 turn; 114 tint");
  EXPECT_EQ(effect.control(24).choices(), (std::vector<std::string>{"one", "two", "three"}));
  const struct {
    PF_ParamIndex index;
    double number, sliderMin, sliderMax, validMax;
  } numbers[] = {
      {4, 1, 0, 0, 0},         {24, 3, 0, 0, 0},
      {34, 0, -5, 5, 32767},   {35, 0, 0, 900, 32767},
      {45, 0.5, -1, 1, 32767}, {46, 9, -254, 254, 32767},  // a range upside down is none
      {104, 30, 0, 0, 0},
  };
  for (const auto& c : numbers) {
    const Control& control = effect.control(c.index);
    EXPECT_EQ(control.number, c.number) << c.index;
    EXPECT_EQ(control.sliderMin, c.sliderMin) << c.index;
    EXPECT_EQ(control.sliderMax, c.sliderMax) << c.index;
    EXPECT_EQ(control.validMax, c.validMax) << c.index;
  }
  EXPECT_EQ(effect.control(94).point.x, 10);
  EXPECT_EQ(effect.control(94).point.y, 20);
  EXPECT_NEAR(effect.control(114).color.green, 0.4, 1e-6);

  // A second update is the user's turn: values stay, and nothing is said again.
  setControl(effect, "turn", {7});
  const int updates = effect.control(24).updates;
  EXPECT_EQ(session.host.updateParamsUi(effect), PF_Err_NONE);
  EXPECT_EQ(effect.control(104).number, 7);
  EXPECT_EQ(effect.control(24).updates, updates);
}

TEST(Panel, TextsEndAtWholeCharacters) {
  std::string cut = "a", whole;  // 33 bytes, of which a record keeps 31 and a half character
  for (int i = 0; i < 16; ++i)
    cut += "\xC3\xA9";
  whole = cut.substr(0, 31);
  cut.insert(0, "b");
  whole = "b" + whole.substr(0, 29);
  Session session;
  const Effect& effect = session.graph(
      picture(), "<graph name='" + cut + "'><inputImage type='image4' name='x'/>" +
                     "<inputImage type='image4' name='" + cut + "'/>" +
                     "<outputImage type='image4' name='o'/><parameter type='float' name='" + cut +
                     "'/><connect fromImage='x' toImage='o'/></graph>");
  EXPECT_EQ(effect.title, "VTD: " + whole);
  EXPECT_EQ(shown(effect), "1 " + whole + "; 44 " + whole);
}

TEST(Panel, FullBanksLeaveParametersOut) {
  Session session;
  std::string bools = "parameter bool b0", floats = "parameter float4x4 m; parameter float f0";
  for (int i = 1; i <= 20; ++i)
    bools += ", b" + std::to_string(i);
  for (int i = 1; i < 40; ++i)
    floats += ", f" + std::to_string(i);
  EXPECT_EQ(shown(session.kernel(picture(), kernelText(bools + ";", kCopy)), 19), "23 b19");
  EXPECT_EQ(shown(session.kernel(picture(), kernelText(floats + ";", kCopy)), 49), "93 f33");
  // A run that no longer fits leaves its place to a smaller one; unbound ones keep their default.
  Effect& tight = session.kernel(
      World(2, 2, kFloat),
      kernelText("parameter float4x4 a, b, c; parameter float3 d <defaultValue: float3(9.0);>;"
                 "parameter float2 e; parameter float g <defaultValue: 4.0;>;",
                 "dst = float4(d, g);"));
  EXPECT_EQ(shown(tight, 48), "92 e x; 93 e y");
  EXPECT_EQ(pixelAt(session.render(tight, {.format = kFloat}), 1, 1), (Rgba{9, 9, 9, 4}));
  // A fifth input has no layer.
  Effect& many = session.kernel(
      picture(), kernelText("input image4 a, b, c, d, e;", "dst = sampleNearest(e, outCoord());"));
  EXPECT_EQ(shown(many), "1 b; 2 c; 3 d");
  EXPECT_EQ(pixelAt(session.render(many), 1, 1), (Rgba{0, 0, 0, 0}));
}

// The host refuses what a control cannot hold; one value must not cost the others theirs.
TEST(Panel, DefaultsComeIntoTheRangeOfTheirControls) {
  Session session;
  std::string declarations = R"(
      parameter float4 ink <aeUIControl: "aeColor"; defaultValue: float4(2.0, 0.5, -3, HUGE);>;
      parameter int3 tint <parameterType: "colorRGB"; defaultValue: int3(1,255,-1);>;
      parameter float2 a <aeUIControl: "aePoint"; defaultValue: float2(1.0, 2.0);
        aePointRelativeDefaultValue: float2(0.5, 0.25);>;
      parameter float2 b <aeUIControl: "aePoint";
        aePointRelativeDefaultValue: float2(HUGE, -HUGE);>;
      parameter float2 c <parameterType: "position"; defaultValue: float2(-HUGE, 7);>;
      parameter float2 d <aeUIControl: "aePoint"; aePointRelativeDefaultValue: float2(0.25);>;
      parameter int pick <aeUIControl: "aePopup"; defaultValue: 99;>;
      parameter float item <aeUIControl: "aePopup"; defaultValue: -HUGE;>;
      parameter int steps <defaultValue: 40000;>;
      parameter float turn <aeUIControl: "aeAngle"; defaultValue: HUGE;>;
      parameter float2 last <defaultValue: float2(-HUGE, 3);>;)";
  for (std::size_t at; (at = declarations.find("HUGE")) != std::string::npos;)
    declarations.replace(at, 4, 60, '9');
  Effect& effect = session.kernel(picture(), kernelText(declarations, kCopy));
  const auto& color = effect.findShown("ink")->color;
  EXPECT_EQ((std::vector{color.red, color.green, color.blue, color.alpha}),
            (std::vector{1.0, 0.5, 0.0, 1.0}));
  const auto& tint = effect.findShown("tint")->color;
  EXPECT_EQ((std::vector{tint.red, tint.green, tint.blue, tint.alpha}),
            (std::vector{1.0, 1.0, 0.0, 1.0}));
  const struct {
    const char* label;
    double x, y;
  } points[] = {{"a", 20, 5}, {"b", 32767, -32767}, {"c", -32767, 7}, {"d", 10, 5}};
  for (const auto& point : points) {
    EXPECT_EQ(effect.findShown(point.label)->point.x, point.x) << point.label;
    EXPECT_EQ(effect.findShown(point.label)->point.y, point.y) << point.label;
  }
  for (const auto& [label, number] : {std::pair{"pick", 32},
                                      {"item", 1},
                                      {"steps", 32767},
                                      {"turn", 32767},
                                      {"last x", -32767},
                                      {"last y", 3}}) {
    EXPECT_EQ(effect.findShown(label)->number, number) << label;
  }
  // Values that are no numbers come in graphs.
  Effect& graph = session.graph(
      picture(),
      R"(<graph name="g"><parameter name="at" type="float2"><metadata name="aeUIControl"
      value="aePoint"/><metadata name="aePointRelativeDefaultValue" value="nan,inf"/></parameter>
      <parameter name="ink" type="float3"><metadata name="parameterType" value="colorRGB"/>
      <metadata name="defaultValue" value="nan,inf,-inf"/></parameter>
      <parameter name="pick" type="float"><metadata name="aeUIControl" value="aePopup"/>
      <metadata name="defaultValue" value="nan"/></parameter>
      <parameter name="n" type="float2"><metadata name="defaultValue" value="nan,-inf"/>
      <metadata name="minValue" value="nan,nan"/></parameter>
      <inputImage type="image4" name="s"/><outputImage type="image4" name="o"/>
      <connect fromImage="s" toImage="o"/></graph>)");
  EXPECT_EQ(graph.findShown("at")->point.x, 0);
  EXPECT_EQ(graph.findShown("at")->point.y, 32767);
  EXPECT_EQ(graph.findShown("ink")->color.red, 0);
  EXPECT_EQ(graph.findShown("ink")->color.green, 1);
  EXPECT_EQ(graph.findShown("pick")->number, 1);
  EXPECT_EQ(graph.findShown("n x")->number, 0);
  EXPECT_EQ(graph.findShown("n y")->number, -32767);
  EXPECT_EQ(graph.findShown("n x")->sliderMin, -254);
}

// Whichever call is refused: in the end every control has its default, and later updates are as
// usual.
TEST(Panel, ARefusalCostsNoDefault) {
  Session session;
  const std::string path = session.file(
      "k.pbk", kernelText("parameter float a <defaultValue: 1.0;>; parameter float b <defaultValue:"
                          " 2.0;>; parameter float c <defaultValue: 3.0;>;",
                          kCopy));
  const auto begin = [&]() -> Effect& {
    Layer& layer = session.layer(picture(), path);
    return session.host.newInstance(layer);
  };
  session.host.updateParamsUi(begin());
  for (uint64_t n = 1; n < 5000; ++n) {
    Effect& effect = begin();
    const uint64_t before = session.host.gate().refusals();
    session.host.gate().refuseNth(CallKind::kSuiteCall, n);
    session.host.updateParamsUi(effect);
    session.host.gate().refuseNth(0);
    if (session.host.gate().refusals() == before) break;
    EXPECT_EQ(session.host.updateParamsUi(effect), PF_Err_NONE);
    EXPECT_EQ(effect.title, "VTD: Sample");
    for (const auto& [label, number] : {std::pair{"a", 1}, {"b", 2}, {"c", 3}})
      EXPECT_EQ(effect.findShown(label)->number, number) << session.host.gate().lastRefused();
    session.host.closeInstance(effect);
    if (HasFailure()) break;
  }
}

// A control that the host never takes leaves the others as usual.
TEST(Panel, ARefusedControlCostsNoOther) {
  Session session;
  headless::Gate& gate = session.host.gate();
  const std::string path = session.file(
      "k.pbk", kernelText("parameter float a <defaultValue: 1.0;>; parameter float b <defaultValue:"
                          " 2.0;>; parameter float c <defaultValue: 3.0;>;",
                          kCopy));
  Effect& effect = session.host.newInstance(session.layer(picture(), path));
  int tries = 0;
  gate.onCall("AEGP_GetNewStreamValue", [&](CallKind, const char*) {
    if (++tries <= 2) gate.refuseNth(CallKind::kSuiteCall, 1);
  });
  EXPECT_NE(session.host.updateParamsUi(effect), PF_Err_NONE);
  EXPECT_EQ(gate.lastRefused(), "suite call: AEGP_SetStreamValue");
  EXPECT_EQ(gate.refusals(), 2u);
  gate.onCall("", {});
  for (const auto& [label, number] : {std::pair{"a", 0}, {"b", 2}, {"c", 3}})
    EXPECT_EQ(effect.findShown(label)->number, number);
  effect.setNumber(effect.findShown("c")->index, 7);
  EXPECT_EQ(session.host.updateParamsUi(effect), PF_Err_NONE);
  EXPECT_EQ(effect.findShown("c")->number, 7) << "the user's value";

  // The same of names and ranges, which the next update makes good.
  bool wasRefused = false;
  for (uint64_t n = 1; !wasRefused && n < 5000; ++n) {
    Effect& other = session.host.newInstance(session.layer(picture(), path));
    gate.refuseNth(CallKind::kSuiteCall, n);
    session.host.updateParamsUi(other);
    gate.refuseNth(0);
    wasRefused = gate.lastRefused() == "suite call: PF_UpdateParamUI";
    if (wasRefused) {
      EXPECT_FALSE(other.findShown("a"));
      EXPECT_TRUE(other.findShown("b") && other.findShown("c"));
    }
    session.host.closeInstance(other);
  }
  EXPECT_TRUE(wasRefused);
}

// What is saved while the defaults are given is not fresh when it comes back.
TEST(Panel, ASaveAmongTheDefaultsKeepsTheUsersValues) {
  Session session;
  Effect& effect = session.host.newInstance(session.layer(
      picture(),
      session.file("k.pbk", kernelText("parameter float a <defaultValue: 1.0;>;", kCopy))));
  session.host.gate().onCall("AEGP_SetStreamValue",
                             [&](CallKind, const char*) { session.host.save(effect); });
  EXPECT_EQ(session.host.updateParamsUi(effect), PF_Err_NONE);
  EXPECT_EQ(session.host.gate().visits(), 1u);
  session.host.gate().onCall("", {});
  effect.setNumber(effect.findShown("a")->index, 7);
  EXPECT_EQ(session.host.updateParamsUi(effect), PF_Err_NONE);
  EXPECT_EQ(effect.findShown("a")->number, 7);
}

TEST(Panel, TheUsersNameOfAnInstanceStays) {
  Session session;
  Effect& effect = session.host.newInstance(session.layer(picture()));
  const auto update = [&] { EXPECT_EQ(session.host.updateParamsUi(effect), PF_Err_NONE); };
  update();
  EXPECT_EQ(effect.title, "VTD: (Invalid PB)");
  // Another program is another title.
  for (const char* expected : {"VTD: (Invalid PB)", "VTD: Other"}) {
    EXPECT_EQ(effect.title, expected);
    effect.title = "Mine";
    update();
    EXPECT_EQ(effect.title, "Mine");
    session.host.save(effect);
    update();
    EXPECT_EQ(effect.title, "Mine") << "saving is no reason";
    session.host.scripts().fileAnswers = {
        session.file("other.pbk", kernelText("", kCopy, "Other"))};
    EXPECT_EQ(session.host.doDialog(effect), PF_Err_NONE);
    update();
  }
}

}  // namespace
}  // namespace vellumtide::end_to_end
