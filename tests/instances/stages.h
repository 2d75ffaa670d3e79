// Every command of a whole life, each with the scene that it needs, so that a test can let any one
// step of it fail.
#pragma once

#include <filesystem>
#include <functional>

#include "tests/instances/instances.h"

namespace vellumtide::instances {

inline constexpr PF_Err kRefused = PF_Err_OUT_OF_MEMORY;
inline constexpr PF_Err kNoInstance = PF_Err_INTERNAL_STRUCT_DAMAGED;

inline constexpr PF_PixelFormat kFormats[] = {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64,
                                              PF_PixelFormat_ARGB128};

// Two inputs and a control of each kind, so that every way to the host is taken.
inline const std::string kKernel = kernelText(
    "input image4 src; input image4 under;"
    "parameter float gain <minValue:0.0; maxValue:2.0; defaultValue:0.5;>;"
    "parameter int mode <aeUIControl:\"aePopup\"; aePopupString:\"a|b\"; defaultValue:1;>;"
    "parameter bool on <defaultValue:true;>; parameter int steps <defaultValue:3;>;"
    "parameter float2 at <aeUIControl:\"aePoint\"; aePointRelativeDefaultValue:float2(0.5, 0.5);>;"
    "parameter float turn <aeUIControl:\"aeAngle\"; defaultValue:90.0;>;"
    "parameter pixel4 tint <aeUIControl:\"aeColor\"; defaultValue:pixel4(1.0, 0.0, 0.5, 1.0);>;",
    "dst = sampleNearest(src, outCoord()) * gain + sampleNearest(under, outCoord()) * 0.25 +"
    " tint * 0.125 + float4(float(mode + steps) + (on ? 1.0 : 0.0)) * 0.02;");

// One host, and what its commands work on.
class Scene {
 public:
  Scene() : layer(add({1, 0.5, 0, 1})), under(add({0, 1, 0, 1})) {
    host().preferences().set("Settings_cs_VTD_Launcher", "rootFolder", session.folder.path("root"));
  }

  Host& host() { return session.host; }

  std::string nextName() const { return "k" + std::to_string(copies_) + ".pbk"; }
  // A copy of the kernel under a name that the module has not seen.
  std::string freshPath(const std::string& folder = "", const std::string& text = kKernel) {
    const std::string name = folder + nextName();
    ++copies_;
    return session.file(name, text);
  }

  // A new instance, for the path unless that is empty.
  void make(const std::string& programPath) {
    path = programPath;
    layer.markers().clear();
    if (!path.empty()) layer.addMarker(path);
    effect = &host().newInstance(layer);
  }
  // The same for a program that the module holds already.
  void makeKnown() {
    if (known_.empty()) known_ = freshPath();
    make(known_);
  }
  void makeShown() {
    makeKnown();
    EXPECT_EQ(host().updateParamsUi(*effect), PF_Err_NONE);
  }
  void close() {
    if (effect) host().closeInstance(*effect);
    effect = nullptr;
  }

  // Whatever happened before: an instance is there or can be made, it runs the program or takes it
  // when the user chooses it, and the picture is right at every depth.
  void expectWorks() {
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

  Session session{{.captureOutput = true, .checkGuardsEveryCall = false}};
  Layer& layer;
  Layer& under;
  Effect* effect = nullptr;
  std::string path;

 private:
  Layer& add(const ColorValue& color) {
    World world(5, 4, PF_PixelFormat_ARGB32);
    for (int i = 0; i < 20; ++i)
      world.setPixel(i % 5, i / 5, color.red, color.green, color.blue, color.alpha);
    return session.comp.addLayer("layer", std::move(world));
  }

  int copies_ = 0;
  std::string known_;
};

struct Stage {
  const char* name;
  std::function<void(Scene&)> prepare;
  std::function<PF_Err(Scene&)> act;
  std::vector<PF_Err> results;  // that the command may end with
};

inline PF_Err lastError(Scene& scene) {
  return scene.host().lastCall().error;
}

inline PF_Err render(Scene& scene, PF_PixelFormat format) {
  return scene.host().render(*scene.effect, {.format = format}).error;
}

inline void makeWithUnder(Scene& scene) {
  scene.makeShown();
  scene.effect->setLayer(scene.effect->findShown("under")->index, &scene.under);
}

inline const Stage kStages[] = {
    {"parameter set-up",
     [](Scene& s) { s.path = s.freshPath(); },
     [](Scene& s) { return s.host().paramsSetup(); },
     {PF_Err_NONE, kRefused}},
    {"new instance from a marker",
     [](Scene&) {},
     [](Scene& s) {
       s.make(s.freshPath());
       return lastError(s);
     },
     {PF_Err_NONE, kRefused}},
    {"first panel update",
     [](Scene& s) { s.make(s.freshPath()); },
     [](Scene& s) { return s.host().updateParamsUi(*s.effect); },
     {PF_Err_NONE, kRefused}},
    {"information dialog",
     [](Scene& s) { s.makeShown(); },
     [](Scene& s) { return s.host().doDialog(*s.effect); },
     {PF_Err_NONE}},
    {"file chosen in the dialog",
     [](Scene& s) {
       s.make("");
       s.path = s.freshPath();
     },
     [](Scene& s) {
       s.host().scripts().fileAnswers = {s.path};
       return s.host().doDialog(*s.effect);
     },
     {PF_Err_NONE, kRefused}},
    {"about box with a log to export",
     [](Scene& s) {
       s.make(s.freshPath("", kernelText("", "dst = nothing;")));
       s.close();
       s.makeShown();
       s.host().scripts().confirmAnswers = {true};
       s.host().scripts().folderAnswers = {s.session.folder.path("")};
     },
     [](Scene& s) { return s.host().about(s.effect); },
     {PF_Err_NONE, kRefused}},
    {"frame of 8 bits",
     makeWithUnder,
     [](Scene& s) { return render(s, PF_PixelFormat_ARGB32); },
     {PF_Err_NONE, kRefused}},
    {"frame of 16 bits",
     makeWithUnder,
     [](Scene& s) { return render(s, PF_PixelFormat_ARGB64); },
     {PF_Err_NONE, kRefused}},
    {"frame of 32 bits",
     makeWithUnder,
     [](Scene& s) { return render(s, PF_PixelFormat_ARGB128); },
     {PF_Err_NONE, kRefused}},
    {"flatten",
     [](Scene& s) { s.makeShown(); },
     [](Scene& s) { return s.host().flatten(*s.effect); },
     {PF_Err_NONE}},
    {"re-set-up of a file that moved",
     [](Scene& s) {
       // Alone in its folder, so that the search takes the same number of calls each time.
       std::filesystem::remove_all(s.session.folder.path("root"));
       s.make("/gone/" + s.nextName());
       EXPECT_EQ(s.host().flatten(*s.effect), PF_Err_NONE);
       s.path = s.freshPath("root/");
     },
     [](Scene& s) { return s.host().resetup(*s.effect); },
     {PF_Err_NONE, kNoInstance}},
    {"sequence set-down",
     [](Scene& s) { s.makeShown(); },
     [](Scene& s) { return s.host().sequenceSetdown(*s.effect); },
     {PF_Err_NONE}},
};

}  // namespace vellumtide::instances
