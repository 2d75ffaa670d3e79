// From within the n-th call of a command the host runs another one, for the calls of every command
// of a whole life: nobody's data is used after it is gone, the host's books stay right, and the
// next command works.
#include <cstdio>
#include <cstring>
#include <map>
#include <optional>

#include "tests/instances/whole_life.h"

namespace vellumtide::instances {
namespace {

// A command of the instance that another command is under way for.
struct Inner {
  const char* name;
  std::function<void(Host&, Effect&)> run;
};

const Inner kInner[] = {
    {"flatten", [](Host& host, Effect& effect) { host.flatten(effect); }},
    {"set-down", [](Host& host, Effect& effect) { host.sequenceSetdown(effect); }},
    {"save", [](Host& host, Effect& effect) { host.save(effect); }},
    {"duplicate", [](Host& host, Effect& effect) { host.closeInstance(host.duplicate(effect)); }},
    {"frame",
     [](Host& host, Effect& effect) {
       EXPECT_EQ(host.render(effect, {.format = PF_PixelFormat_ARGB64}).error, PF_Err_NONE);
     }},
    {"panel update",
     [](Host& host, Effect& effect) { EXPECT_EQ(host.updateParamsUi(effect), PF_Err_NONE); }},
    {"information dialog",
     [](Host& host, Effect& effect) { EXPECT_EQ(host.doDialog(effect), PF_Err_NONE); }},
    {"set-down of the others",
     [](Host& host, Effect& effect) {
       for (Effect& other : host.effects()) {
         if (&other != &effect && other.sequenceData) host.sequenceSetdown(other);
       }
     }},
};

// Of the calls that a stage makes: where each function is called first and last. Memory is
// given and taken without anything else going on in a host.
std::vector<uint64_t> callsToVisit(Scene& scene, const Stage& stage) {
  std::map<std::string, std::vector<uint64_t>> calls;
  uint64_t count = 0;
  stage.prepare(scene);
  scene.host().gate().onCall("", [&](CallKind, const char* name) {
    ++count;
    if (std::strncmp(name, "host_", 5) == 0) return;
    std::vector<uint64_t>& places = calls[name];
    if (places.size() == 2) places.pop_back();
    places.push_back(count);
  });
  stage.act(scene);
  scene.host().gate().onCall("", {});
  scene.close();
  std::vector<uint64_t> all;
  for (const auto& [name, places] : calls)
    all.insert(all.end(), places.begin(), places.end());
  return all;
}

int reenterEach(const Stage& stage, const Inner& inner) {
  Scene scene;
  Host& host = scene.host();
  scene.makeShown();
  scene.close();
  int reentered = 0;
  for (const uint64_t n : callsToVisit(scene, stage)) {
    stage.prepare(scene);
    std::string call;
    host.gate().onNth(n, [&](CallKind, const char* name) {
      call = name;
      if (host.effects().empty()) return;
      ++reentered;
      inner.run(host, host.effects().back());
    });
    const PF_Err result = stage.act(scene);
    host.gate().onCall("", {});
    SCOPED_TRACE(std::string(stage.name) + ", call " + std::to_string(n) + ", " + call + ", " +
                 inner.name);
    EXPECT_NE(std::find(stage.results.begin(), stage.results.end(), result), stage.results.end())
        << "result " << result;
    EXPECT_EQ(host.books().faultText(), "");
    scene.expectWorks();
    scene.close();
    if (::testing::Test::HasFailure()) break;
  }
  return reentered;
}

TEST(Reentry, OfEveryCommandIntoEveryCommand) {
  int reentered = 0;
  for (const Stage& stage : wholeLife()) {
    for (const Inner& inner : kInner) {
      reentered += reenterEach(stage, inner);
      if (HasFailure()) return;
    }
  }
  std::printf("%-32s %5d calls re-entered\n", "all commands", reentered);
  EXPECT_GT(reentered, 1000);
}

// Two instances of one program with values of their own: a frame of the one from within a frame of
// the other.
TEST(Reentry, AFrameKeepsItsValues) {
  Session session;
  const std::string path =
      session.file("fill.pbk", kernelText("parameter float first; parameter float last;",
                                          "dst = float4(first, last, 0.0, 1.0);"));
  Host& host = session.host;
  Effect* effects[2];
  for (int i = 0; i < 2; ++i) {
    effects[i] = &session.effect(smallWorld(PF_PixelFormat_ARGB128), path);
    effects[i]->setNumber(effects[i]->findShown("first")->index, 0.25 + i * 0.5);
    effects[i]->setNumber(effects[i]->findShown("last")->index, 0.75 - i * 0.5);
  }
  const auto pixelOf = [&](Effect& effect) {
    const RenderResult frame = host.render(effect, {.format = PF_PixelFormat_ARGB128});
    EXPECT_EQ(frame.error, PF_Err_NONE);
    return frame.output->pixel(1, 1);
  };
  const std::vector<double> expected[] = {{0.25, 0.75, 0, 1}, {0.75, 0.25, 0, 1}};
  uint64_t visits;
  uint64_t n = 1;
  do {
    SCOPED_TRACE("call " + std::to_string(n));
    visits = host.gate().visits();
    host.gate().onNth(n++,
                      [&](CallKind, const char*) { EXPECT_EQ(pixelOf(*effects[1]), expected[1]); });
    ASSERT_EQ(pixelOf(*effects[0]), expected[0]);
    host.gate().onCall("", {});
  } while (host.gate().visits() > visits && !HasFailure());
  EXPECT_GT(n, 20u);
}

struct Lost {
  Effect& open() { return host.openInstance(layer, savedData("/gone/fx.pbk")); }

  Session session;
  Host& host = session.host;
  Layer& layer = session.comp.addLayer("layer", smallWorld());
  std::string found = session.file(
      "fx.pbk", kernelText("parameter float gain <defaultValue: 0.5;>;", "dst = float4(gain);"));
};

// What the host is asked to do after the information dialog; whoever had lost the same file has it
// back with the values of the project.
TEST(Reentry, AFoundFileIsSavedAndShown) {
  const struct {
    const char* name;
    std::optional<std::string> chosen;  // "" is the lost file
    int changes;
  } cases[] = {
      {"cancelled", std::nullopt, 0}, {"not a program", "/gone/other.pbk", 0}, {"found", "", 1}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Lost lost;
    Effect& effect = lost.open();
    Effect& other = lost.open();
    Effect& elsewhere = lost.host.openInstance(lost.layer, savedData("/gone/another.pbk"));
    constexpr PF_ParamIndex kFirstNumber = 44;
    effect.setNumber(kFirstNumber, 0.25);
    other.setNumber(kFirstNumber, 0.75);
    lost.host.scripts().fileAnswers = {
        c.chosen ? std::optional(c.chosen->empty() ? lost.found : *c.chosen) : std::nullopt};
    EXPECT_EQ(lost.host.doDialog(effect), PF_Err_NONE);
    EXPECT_EQ(lost.host.projectDirtied, c.changes);
    EXPECT_EQ(lost.host.windowsRefreshed, c.changes);
    for (Effect* shown : {&effect, &other}) {
      EXPECT_EQ(lost.host.updateParamsUi(*shown), PF_Err_NONE);
      EXPECT_EQ(shown->title, c.changes ? "VTD: Sample" : "VTD: (Invalid PB)");
      EXPECT_EQ(shown->control(kFirstNumber).number, shown == &effect ? 0.25 : 0.75);
      if (!c.changes) continue;
      const World frame = *lost.host.render(*shown, {.format = PF_PixelFormat_ARGB128}).output;
      EXPECT_EQ(frame.pixel(1, 1)[0], shown == &effect ? 0.25 : 0.75);
    }
    EXPECT_EQ(lost.host.save(elsewhere), savedData("/gone/another.pbk"));
  }
}

// The answer of a dialog is for nobody else when its instance is gone.
TEST(Reentry, AnAnswerForAnInstanceThatIsGoneChangesNothing) {
  for (const bool flattens : {false, true}) {
    SCOPED_TRACE(flattens);
    Lost lost;
    Effect& effect = lost.open();
    Effect& other = lost.open();
    lost.host.scripts().fileAnswers = {lost.found};
    lost.host.scripts().onDialog = [&](const DialogRecord&) {
      flattens ? lost.host.flatten(effect) : lost.host.sequenceSetdown(effect);
    };
    EXPECT_EQ(lost.host.doDialog(effect), PF_Err_NONE);
    EXPECT_EQ(lost.host.projectDirtied, 0);
    EXPECT_EQ(effect.flat, flattens);
    EXPECT_EQ(effect.sequenceData != nullptr, flattens);
    lost.host.scripts().onDialog = {};
    EXPECT_EQ(lost.host.save(other), savedData("/gone/fx.pbk"));
  }
}

// A host that copies what a command gives it must not get an instance that has ended meanwhile.
TEST(Reentry, WhatIsGoneIsNotGivenOut) {
  Lost lost;
  Effect& effect = lost.open();
  Effect& twin = lost.open();
  lost.host.sequenceSetdown(twin);
  lost.host.flatten(effect);
  const PF_Handle flat = effect.sequenceData;
  const PF_OutData* out = nullptr;
  CallArguments arguments;
  arguments.adjust = [&](PF_InData&, PF_OutData& given) { out = &given; };
  bool isGone = false;
  lost.host.gate().onCall("", [&](CallKind, const char*) {
    if (isGone || !out->sequence_data || out->sequence_data == flat) return;
    isGone = true;
    twin.sequenceData = out->sequence_data;
    lost.host.sequenceSetdown(twin);
  });
  lost.host.call(PF_Cmd_SEQUENCE_RESETUP, &effect, arguments);
  lost.host.gate().onCall("", {});
  EXPECT_TRUE(isGone);
  EXPECT_EQ(lost.host.books().faultText(), "");
  EXPECT_FALSE(effect.sequenceData);
}

}  // namespace
}  // namespace vellumtide::instances
