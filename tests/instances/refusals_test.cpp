// The host refuses the n-th call of a command, for every n of every command of a whole life: the
// command ends with its documented result, the host's books stay right, its GL context is current
// again, and the next command works.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>

#include "tests/instances/instances.h"

namespace vellumtide::instances {
namespace {

constexpr PF_Err kRefused = PF_Err_OUT_OF_MEMORY;
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

PF_Err lastError(Scene& scene) {
  return scene.host().lastCall().error;
}

PF_Err render(Scene& scene, PF_PixelFormat format) {
  return scene.host().render(*scene.effect, {.format = format}).error;
}

void makeWithUnder(Scene& scene) {
  scene.makeShown();
  scene.effect->setLayer(scene.effect->findShown("under")->index, &scene.under);
}

const Stage kStages[] = {
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

// Without memory for the scope a set-down can free nothing: its first two calls are that memory.
constexpr int kScopeCalls = 2;

int refuseEvery(const Stage& stage) {
  Scene scene;
  scene.makeShown();
  scene.close();
  const bool isSetdown = std::string(stage.name).find("set-down") != std::string::npos;
  for (int n = isSetdown ? kScopeCalls + 1 : 1;; ++n) {
    stage.prepare(scene);
    Gate& gate = scene.host().gate();
    const uint64_t before = gate.refusals();
    gate.refuseNth(static_cast<uint64_t>(n));
    const PF_Err result = stage.act(scene);
    gate.refuseNth(0);
    const bool refused = gate.refusals() > before;
    SCOPED_TRACE(std::string(stage.name) + ", call " + std::to_string(n) + ", " +
                 gate.lastRefused());
    EXPECT_TRUE(refused || result == PF_Err_NONE) << result;
    EXPECT_NE(std::find(stage.results.begin(), stage.results.end(), result), stage.results.end())
        << "result " << result;
    EXPECT_EQ(scene.host().books().faultText(), "");
    scene.host().scripts().confirmAnswers.clear();
    scene.host().scripts().folderAnswers.clear();
    scene.expectWorks();
    scene.close();
    if (::testing::Test::HasFailure() || !refused) return n - 1;
  }
}

TEST(Refusals, OfEveryCallOfEveryCommand) {
  int injected = 0;
  for (const Stage& stage : kStages) {
    const int count = refuseEvery(stage);
    std::printf("%-32s %5d calls refused\n", stage.name, count);
    EXPECT_GT(count, 5) << stage.name;
    injected += count;
    if (HasFailure()) break;
  }
  std::printf("%-32s %5d calls refused\n", "all commands", injected);
}

TEST(Refusals, OfTheMemoryForASetDownLeaveTheInstance) {
  for (uint64_t n = 1; n <= kScopeCalls; ++n) {
    Scene scene;
    scene.makeShown();
    scene.host().gate().refuseNth(n);
    EXPECT_EQ(scene.host().sequenceSetdown(*scene.effect), PF_Err_NONE);
    EXPECT_EQ(scene.host().gate().refusals(), 1u);
    scene.expectWorks();
    scene.session.leaks = true;
  }
}

// The first and the last command, each in a host of its own.
TEST(Refusals, OfGlobalSetUpAndSetDown) {
  int injected = 0;
  for (uint64_t n = 1; !HasFailure(); ++n) {
    SCOPED_TRACE("call " + std::to_string(n));
    const auto module = Module::load(defaultModulePath());
    Host host(module, {.captureOutput = true});
    host.gate().refuseNth(n);
    const PF_Err result = host.globalSetup();
    const uint64_t refusals = host.gate().refusals();
    host.gate().refuseNth(0);
    EXPECT_TRUE(result == PF_Err_NONE || (refusals && result == kRefused)) << result;
    EXPECT_EQ(host.about(), PF_Err_NONE);
    EXPECT_TRUE(result == PF_Err_NONE || host.globalSetup() == PF_Err_NONE);
    Layer& layer = host.addComposition("comp").addLayer("layer", smallWorld());
    Effect& effect = host.newInstance(layer);
    EXPECT_EQ(host.updateParamsUi(effect), PF_Err_NONE);
    EXPECT_EQ(effect.title, "VTD: (Invalid PB)");
    host.closeInstance(effect);
    host.gate().refuseNth(n + kScopeCalls);
    EXPECT_EQ(host.globalSetdown(), PF_Err_NONE);
    injected += static_cast<int>(host.gate().refusals());
    host.finish();
    EXPECT_EQ(host.books().faultText(), "");
    if (host.gate().refusals() == 0) break;
  }
  std::printf("%-32s %5d calls refused\n", "global set-up and set-down", injected);
  EXPECT_GT(injected, 10);
}

}  // namespace
}  // namespace vellumtide::instances
