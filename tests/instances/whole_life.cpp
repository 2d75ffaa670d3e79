#include "tests/instances/whole_life.h"

#include <filesystem>

namespace vellumtide::instances {
namespace {

constexpr PF_Err kNoInstance = PF_Err_INTERNAL_STRUCT_DAMAGED;

constexpr PF_PixelFormat kFormats[] = {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64,
                                       PF_PixelFormat_ARGB128};

// Two inputs and a control of each kind, so that every way to the host is taken.
const std::string kKernel = kernelText(
    "input image4 src; input image4 under;"
    "parameter float gain <minValue:0.0; maxValue:2.0; defaultValue:0.5;>;"
    "parameter int mode <aeUIControl:\"aePopup\"; aePopupString:\"a|b\"; defaultValue:1;>;"
    "parameter bool on <defaultValue:true;>; parameter int steps <defaultValue:3;>;"
    "parameter float2 at <aeUIControl:\"aePoint\"; aePointRelativeDefaultValue:float2(0.5, 0.5);>;"
    "parameter float turn <aeUIControl:\"aeAngle\"; defaultValue:90.0;>;"
    "parameter pixel4 tint <aeUIControl:\"aeColor\"; defaultValue:pixel4(1.0, 0.0, 0.5, 1.0);>;",
    "dst = sampleNearest(src, outCoord()) * gain + sampleNearest(under, outCoord()) * 0.25 +"
    " tint * 0.125 + float4(float(mode + steps) + (on ? 1.0 : 0.0)) * 0.02;");

}  // namespace

std::string Scene::freshPath(const std::string& folder, const std::string& text) {
  const std::string name = folder + nextName();
  ++copies_;
  return session.file(name, text.empty() ? kKernel : text);
}

void Scene::expectWorks() {
  host().scripts().confirmAnswers.clear();
  host().scripts().folderAnswers.clear();
  if (!effect || !effect->sequenceData) {
    close();
    make(path);
  }
  ASSERT_TRUE(!effect->flat || host().resetup(*effect) == PF_Err_NONE);
  host().scripts().fileAnswers = {path};
  ASSERT_EQ(host().doDialog(*effect), PF_Err_NONE);
  host().scripts().fileAnswers.clear();
  ASSERT_EQ(host().updateParamsUi(*effect), PF_Err_NONE);
  ASSERT_EQ(effect->title, "VTD: Sample");
  ASSERT_TRUE(effect->findShown("under"));
  effect->setLayer(effect->findShown("under")->index, &under);
  for (const PF_PixelFormat format : kFormats) {
    const RenderResult frame = host().render(*effect, {.format = format});
    ASSERT_EQ(frame.error, PF_Err_NONE);
    const std::vector<double> pixel = frame.output->pixel(4, 3);
    const double expected[] = {0.725, 0.6, 0.1625, 0.975};
    for (int c = 0; c < 4; ++c)
      ASSERT_NEAR(pixel[c], expected[c], 0.006) << "channel " << c;
  }
}

Layer& Scene::add(const ColorValue& color) {
  World world(5, 4, PF_PixelFormat_ARGB32);
  for (int i = 0; i < 20; ++i)
    world.setPixel(i % 5, i / 5, color.red, color.green, color.blue, color.alpha);
  return session.comp.addLayer("layer", std::move(world));
}

namespace {

void makeWithUnder(Scene& scene) {
  scene.makeShown();
  scene.effect->setLayer(scene.effect->findShown("under")->index, &scene.under);
}

void makeShown(Scene& scene) {
  scene.makeShown();
}

void makeFresh(Scene& scene) {
  scene.make(scene.freshPath());
}

void makeWithLog(Scene& s) {
  s.make(s.freshPath("", kernelText("", "dst = nothing;")));
  s.close();
  s.makeShown();
  s.host().scripts().confirmAnswers = {true};
  s.host().scripts().folderAnswers = {s.session.folder.path("")};
}

// Alone in its folder, so that the search takes the same number of calls each time.
void makeMoved(Scene& s) {
  std::filesystem::remove_all(s.session.folder.path("root"));
  s.make("/gone/" + s.nextName());
  EXPECT_EQ(s.host().flatten(*s.effect), PF_Err_NONE);
  s.path = s.freshPath("root/");
}

PF_Err makeInstance(Scene& s) {
  makeFresh(s);
  return s.host().lastCall().error;
}

PF_Err chooseFile(Scene& s) {
  s.host().scripts().fileAnswers = {s.path = s.freshPath()};
  return s.host().doDialog(*s.effect);
}

template <PF_PixelFormat format>
PF_Err render(Scene& s) {
  return s.host().render(*s.effect, {.format = format}).error;
}

constexpr PF_Err kNone = PF_Err_NONE;

const std::vector<Stage> kStages = {
    {"parameter set-up",
     [](Scene& s) { s.path = s.freshPath(); },
     [](Scene& s) { return s.host().paramsSetup(); },
     {kNone, kRefused}},
    {"new instance from a marker", [](Scene&) {}, makeInstance, {kNone, kRefused}},
    {"first panel update",
     makeFresh,
     [](Scene& s) { return s.host().updateParamsUi(*s.effect); },
     {kNone, kRefused}},
    {"information dialog",
     makeShown,
     [](Scene& s) { return s.host().doDialog(*s.effect); },
     {kNone}},
    {"file chosen in the dialog", [](Scene& s) { s.make(""); }, chooseFile, {kNone, kRefused}},
    {"about box with a log to export",
     makeWithLog,
     [](Scene& s) { return s.host().about(s.effect); },
     {kNone, kRefused}},
    {"frame of 8 bits", makeWithUnder, render<PF_PixelFormat_ARGB32>, {kNone, kRefused}},
    {"frame of 16 bits", makeWithUnder, render<PF_PixelFormat_ARGB64>, {kNone, kRefused}},
    {"frame of 32 bits", makeWithUnder, render<PF_PixelFormat_ARGB128>, {kNone, kRefused}},
    {"flatten", makeShown, [](Scene& s) { return s.host().flatten(*s.effect); }, {kNone}},
    {"re-set-up of a file that moved",
     makeMoved,
     [](Scene& s) { return s.host().resetup(*s.effect); },
     {kNone, kNoInstance}},
    {"sequence set-down",
     makeShown,
     [](Scene& s) { return s.host().sequenceSetdown(*s.effect); },
     {kNone}},
};

}  // namespace

const std::vector<Stage>& wholeLife() {
  return kStages;
}

}  // namespace vellumtide::instances
