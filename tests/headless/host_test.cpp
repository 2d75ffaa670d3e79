// A well-behaved module's whole life, and what the host answers it.
#include "subject_host.h"

namespace vellumtide::headless {
namespace {

// The subject raises every byte by its slider.
void expectRaised(const World& output, const World& input, int by) {
  const int pixel = bytesPerPixel(input.format());
  const PF_LRect whole = input.rect(), part = output.rect();
  for (int y = 0; y < output.height(); ++y) {
    const uint8_t* from = input.row(y + part.top - whole.top) + (part.left - whole.left) * pixel;
    for (int i = 0; i < output.width() * pixel; ++i) {
      ASSERT_EQ(output.row(y)[i], static_cast<uint8_t>(from[i] + by))
          << "byte " << i << " of " << y;
    }
  }
}

TEST(Host, WholeLifeLeavesBooksEmpty) {
  SubjectHost subject("confirm('go?', true, 'T')");
  Host& host = subject.host;
  Effect& effect = *subject.effect;
  EXPECT_EQ(host.registeredName, "Subject");
  EXPECT_EQ(effect.optionsButton, "Options");
  ASSERT_EQ(effect.controls().size(), 9u);
  EXPECT_EQ(effect.control(3).number, 2);
  EXPECT_EQ(effect.control(3).choices(), (std::vector<std::string>{"one", "two", "three"}));
  EXPECT_EQ(effect.control(6).point.x, 8.5);
  EXPECT_EQ(effect.control(8).color.red, 1);

  EXPECT_EQ(host.updateParamsUi(effect), 0);
  EXPECT_EQ(effect.title, "T\u00e9\U0001F600");
  EXPECT_EQ(effect.shownControls().size(), 7u);
  Control* gain = effect.findShown("Gain");
  ASSERT_NE(gain, nullptr);
  EXPECT_EQ(gain->number, 1.5);
  EXPECT_EQ(gain->sliderMax, 2);
  EXPECT_EQ(gain->validMax, 10);

  effect.setNumber(4, 3);
  effect.setNumberAt(4, {0, 24}, 5);
  effect.setNumberAt(4, {10, 24}, 9);
  const PF_LRect part{2, 3, 40, 8};
  for (PF_PixelFormat format :
       {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64, PF_PixelFormat_ARGB128}) {
    subject.layer.setPixels(testPicture(17, 13, format, {48, -4, 2}));
    for (int time : {0, 12}) {
      RenderOptions options;
      options.format = format;
      options.time = time;
      options.request = time == 0 ? std::optional<PF_LRect>(part) : std::nullopt;
      const RenderResult frame = host.render(effect, options);
      ASSERT_EQ(frame.error, 0);
      EXPECT_EQ(frame.output->rect().left, time == 0 ? 2 : -4);
      EXPECT_EQ(frame.output->width(), time == 0 ? 11 : 17);
      expectRaised(*frame.output, subject.layer.pixels(), time == 0 ? 5 : 9);
      World reused = *frame.output;
      reused.fillBytes(0);
      options.output = &reused;
      EXPECT_EQ(host.render(effect, options).output, nullptr);
      expectRaised(reused, subject.layer.pixels(), time == 0 ? 5 : 9);
    }
  }
  const RenderResult nothing = host.render(effect, {.request = PF_LRect{100, 0, 110, 10}});
  EXPECT_EQ(nothing.error, 0);
  EXPECT_EQ(nothing.output->width(), 0);
  EXPECT_EQ(host.render(effect, {.downsampleX = {1, 2}, .downsampleY = {1, 3}}).output->width(), 9);

  host.scripts().confirmAnswers.push_back(true);
  EXPECT_EQ(host.doDialog(effect), 0);
  EXPECT_EQ(host.infoPanel().back().lines[0], "true");
  EXPECT_EQ(host.infoPanel().back().lines[1], std::nullopt);
  const std::vector<uint8_t> flat = host.save(effect);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(flat.data())), "confirm('go?', true, 'T')");
  Effect& copy = host.duplicate(effect);
  EXPECT_EQ(copy.control(5).number, 1.5);
  EXPECT_EQ(host.doDialog(copy), 0);
  host.closeInstance(effect);
  host.finish();
  EXPECT_EQ(host.books().faultText(), "");
  EXPECT_EQ(host.holdings().text(), "nothing");
}

TEST(Host, CapturesWhatAModuleWrites) {
  SubjectHost subject("", {.captureOutput = true});
  for (int round = 0; round < 2; ++round) {
    subject.host.call(kSayThings, subject.effect);
    EXPECT_EQ(subject.host.standardOutput(), "on standard output\n");
    EXPECT_EQ(subject.host.debugOutput(), "on standard error\n");
  }
}

TEST(Host, CommandsMayComeWhileADialogIsOpen) {
  SubjectHost subject("confirm('go?', false)", {.captureOutput = true});
  Host& host = subject.host;
  int inner = 0;
  host.scripts().onDialog = [&](const DialogRecord& dialog) {
    if (dialog.text != "go?" || inner++ > 0) return;
    EXPECT_EQ(host.render(*subject.effect).error, 0);
    host.call(kLeakHandle, subject.effect);
    host.call(kSayThings, subject.effect);
    host.doDialog(*subject.effect);
  };
  host.doDialog(*subject.effect);
  EXPECT_EQ(host.lastCall().command, PF_Cmd_DO_DIALOG);
  EXPECT_EQ(host.scripts().dialogs().size(), 2u);
  EXPECT_EQ(host.scripts().dialogs()[0].answer, "true");
  EXPECT_EQ(host.standardOutput(), "on standard output\n");
  EXPECT_EQ(host.books().command(), "");
  host.finish();
  EXPECT_EQ(host.books().faultCount(), 1u) << host.books().faultText();
}

// From within each call of a frame the host runs another command; the frame and the books stay
// right.
TEST(Host, CommandsMayComeFromWithinAnyCall) {
  const struct {
    const char* name;
    std::function<void(Host&, Effect&)> run;
    bool endsInstance = false;
  } inner[] = {
      {"frame of another depth and part",
       [](Host& host, Effect& effect) {
         const RenderOptions other{.format = PF_PixelFormat_ARGB64,
                                   .request = PF_LRect{1, 1, 9, 7}};
         const RenderResult frame = host.render(effect, other);
         EXPECT_EQ(frame.error, 0);
         EXPECT_EQ(frame.output->width(), 8);
       }},
      {"plain render", [](Host& host, Effect& effect) { EXPECT_EQ(host.plainRender(effect), 0); }},
      {"panel update",
       [](Host& host, Effect& effect) { EXPECT_EQ(host.updateParamsUi(effect), 0); }},
      {"save", [](Host& host, Effect& effect) { EXPECT_EQ(host.save(effect).size(), 100u); }},
      {"duplicate", [](Host& host, Effect& effect) { host.closeInstance(host.duplicate(effect)); }},
      {"flatten",
       [](Host& host, Effect& effect) { EXPECT_TRUE(!host.flatten(effect) && effect.flat); }, true},
      {"set-down", [](Host& host, Effect& effect) { EXPECT_EQ(host.sequenceSetdown(effect), 0); },
       true},
  };
  for (const auto& command : inner) {
    SubjectHost subject;
    Host& host = subject.host;
    for (uint64_t n = 1;; ++n) {
      SCOPED_TRACE(std::string(command.name) + ", call " + std::to_string(n));
      Effect* effect = subject.effect;
      if (command.endsInstance) effect = &host.newInstance(subject.layer);
      const uint64_t before = host.gate().visits();
      host.gate().onNth(n, [&](CallKind, const char*) {
        EXPECT_TRUE(host.takesCommands(*effect));
        command.run(host, *effect);
      });
      effect->setNumber(4, 3);
      const RenderResult frame = host.render(*effect);
      host.gate().onCall("", {});
      ASSERT_EQ(frame.error, 0);
      EXPECT_EQ(effect->flat,
                command.name == std::string("flatten") && host.gate().visits() > before);
      expectRaised(*frame.output, subject.layer.pixels(), 3);
      if (HasFailure()) return;
      if (command.endsInstance) host.closeInstance(*effect);
      if (host.gate().visits() == before) break;
    }
    EXPECT_GE(host.gate().visits(), 8u);
    host.finish();
    EXPECT_EQ(host.books().faultText(), "") << command.name;
  }
}

TEST(Host, VisitsCallsByNameAndGuardsTheInstanceMeanwhile) {
  SubjectHost subject("confirm('go?', false)");
  Host& host = subject.host;
  std::vector<std::string> visited;
  host.gate().onCall("AEGP_ExecuteScript", [&](CallKind kind, const char* name) {
    visited.push_back(std::string(callKindName(kind)) + ": " + name);
    host.doDialog(*subject.effect);  // its own script is not visited
    host.closeInstance(*subject.effect);
  });
  host.doDialog(*subject.effect);
  host.gate().onCall("", {});
  EXPECT_EQ(visited, std::vector<std::string>{"suite call: AEGP_ExecuteScript"});
  EXPECT_TRUE(host.books().hasFault("the instance is in use by a command"));
  EXPECT_EQ(host.books().faultCount(), 1u) << host.books().faultText();
  bool taken = true;
  host.gate().onNth(1, [&](CallKind, const char*) { taken = host.takesCommands(*subject.effect); });
  host.flatten(*subject.effect);
  EXPECT_FALSE(taken);
  EXPECT_TRUE(host.takesCommands(*subject.effect));
}

TEST(Host, RefusesAnyOneCallback) {
  SubjectHost subject;
  Gate& gate = subject.host.gate();
  const uint64_t before = gate.count(CallKind::kCallback);
  ASSERT_EQ(subject.host.render(*subject.effect).error, 0);
  const uint64_t callbacks = gate.count(CallKind::kCallback) - before;
  ASSERT_GE(callbacks, 5u);
  int failedFrames = 0;
  for (uint64_t n = 1; n <= callbacks; ++n) {
    gate.refuseNth(CallKind::kCallback, n);
    failedFrames += subject.host.render(*subject.effect).error == PF_Err_OUT_OF_MEMORY;
    EXPECT_EQ(gate.refusals(), n) << gate.lastRefused();
  }
  // Of all callbacks only the check-in and the release of the suite do not fail the frame.
  EXPECT_EQ(failedFrames, static_cast<int>(callbacks) - 2);
  gate.refuseNth(CallKind::kAllocation, 1);
  subject.host.flatten(*subject.effect);
  EXPECT_EQ(subject.host.lastCall().error, PF_Err_OUT_OF_MEMORY);
  EXPECT_EQ(subject.host.render(*subject.effect).error, 0);
  subject.host.finish();
  EXPECT_EQ(subject.host.books().faultText(), "");
}

TEST(Host, SeveralHostsKeepSeparateBooks) {
  SubjectHost first, second;
  first.host.call(kLeakHandle, first.effect);
  second.host.render(*second.effect);
  first.host.finish();
  second.host.finish();
  EXPECT_EQ(first.host.books().faultCount(), 1u);
  EXPECT_EQ(second.host.books().faultText(), "");
}

TEST(Host, ControlsHoldWhatTheyAreToldAndRefuseTheRest) {
  SubjectHost subject;
  Effect& effect = *subject.effect;
  effect.setNumber(4, 1000.4);
  effect.setNumber(5, -2.25);
  effect.setNumber(3, 99);
  effect.setNumber(2, 5);
  effect.setPoint(6, 100, -3);
  EXPECT_EQ(effect.control(4).number, 100);
  EXPECT_EQ(effect.control(3).number, 3);
  const PF_RationalScale half{1, 2}, full{1, 1};
  EXPECT_EQ(paramDefOf(effect.control(5), full, full).u.fd.value, -147456);
  EXPECT_EQ(paramDefOf(effect.control(2), full, full).u.bd.value, 1);
  EXPECT_EQ(paramDefOf(effect.control(6), half, full).u.td.x_value, 50 * 65536);
  EXPECT_EQ(paramDefOf(effect.control(6), half, full).u.td.y_value, -3 * 65536);
  EXPECT_THROW(effect.setNumber(6, 1), std::invalid_argument);
  EXPECT_THROW(effect.setColor(5, {}), std::invalid_argument);
  EXPECT_THROW(effect.setNumber(9, 1), std::out_of_range);
}

}  // namespace
}  // namespace vellumtide::headless
