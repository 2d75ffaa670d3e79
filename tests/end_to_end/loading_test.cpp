// Programs on their way into an instance: markers, messages, the cache, programs that fail.
#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "tests/support/graph_text.h"
#include "tests/support/pictures.h"
#include "tests/support/session.h"

namespace vellumtide::end_to_end {
namespace {

const char* const kCopy = "dst = sampleNearest(src, outCoord());";

// The instance has no program: its title says so, no control is shown, and a frame leaves the
// output as the host gave it.
void expectUnusable(Session& session, Effect& effect) {
  EXPECT_EQ(effect.title, "VTD: (Invalid PB)");
  EXPECT_TRUE(effect.shownControls().empty());
  World output(9, 7, PF_PixelFormat_ARGB32);
  output.fillBytes(0x5A);
  const uint64_t before = output.checksum();
  const RenderResult frame = session.host.render(effect, {.output = &output});
  EXPECT_EQ(frame.error, PF_Err_NONE);
  EXPECT_FALSE(frame.output) << "the prepared output was not used";
  EXPECT_EQ(output.checksum(), before);
}

TEST(Loading, InfoPanelSaysWhatHappened) {
  Session session;
  const std::string graphText = chain(1, kernelText("", kCopy, "Step")).str();
  const std::string kernel = session.file("a.pbk", kernelText("", kCopy, "Copy"));
  const std::string folder = kernel.substr(0, kernel.size() - 5);
  session.file("a.pbg", graphText);
  session.file("b.PBG", graphText);
  session.file("b.PBK", kernelText("", kCopy));
  const std::string cheese = "K\xC3\xA4se \xF0\x9F\xA7\x80.pbk";
  const struct {
    std::string comment, info, title;
  } cases[] = {
      {kernel, "Kernel has been loaded from file: / Copy", "VTD: Copy"},
      {kernel, "Kernel has been loaded from memory / Copy", "VTD: Copy"},
      {folder + "a.pbg", "Graph has been loaded from file: / chain", "VTD: chain"},
      {folder + "a.pbg", "Graph has been loaded from memory / chain", "VTD: chain"},
      {folder + "b.PBG", "Graph has been loaded from file: / chain", "VTD: chain"},
      {folder + "b.PBK", "Unknown file extention: / " + folder + "b.PBK", ""},
      {folder + "none.pbk", "Kernel file could not be opened: / " + folder + "none.pbk", ""},
      {folder + "none.pbg", "", ""},
      {"a.pbk", "Kernel file could not be opened: / a.pbk", ""},
      {"xapbk", "Kernel file could not be opened: / xapbk", ""},
      {cheese, "Kernel file could not be opened: / " + cheese, ""},
      {".pbk", "", ""},
      {folder + "a.Pbk", "", ""},
      {folder, "", ""},
      {"", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.comment);
    Effect& effect = session.effect(World(9, 7, PF_PixelFormat_ARGB32), c.comment);
    EXPECT_EQ(session.takeInfo(), c.info);
    if (c.title.empty()) {
      expectUnusable(session, effect);
    } else {
      EXPECT_EQ(effect.title, c.title);
    }
  }
}

// From memory, although the file has changed, in silence and with the user's values.
TEST(Loading, SavedInstancesFindTheirProgramAgain) {
  Session session;
  const std::string path =
      session.file("gain.pbk", kernelText("parameter float gain <defaultValue: 2.0;>;",
                                          "dst = sampleNearest(src, outCoord()) * gain;"));
  Effect& effect = session.effect(plainWorld(9, 7, kFloat, {0.25, 0.5, 0, 1}), path);
  EXPECT_EQ(pixelAt(session.render(effect, {.format = kFloat}), 0, 0)[1], 1);
  setControl(effect, "gain", {3});
  const std::vector<uint8_t> saved = session.host.save(effect);
  EXPECT_EQ(std::string(saved.begin(), saved.end()),
            std::string("\1\0\0\0\0\0\0\0", 8) + path + '\0');
  session.file("gain.pbk", "");
  session.takeInfo();

  Effect& again = session.host.duplicate(effect);
  EXPECT_EQ(session.host.updateParamsUi(again), PF_Err_NONE);
  EXPECT_EQ(session.takeInfo(), "");
  EXPECT_EQ(again.title, "VTD: Sample");
  EXPECT_EQ(pixelAt(session.render(again, {.format = kFloat}), 0, 0)[1], 1.5);
}

TEST(Loading, ProgramsThatDoNotBuildAreReported) {
  HostOptions options;
  options.captureOutput = true;
  Session session(options);
  const std::string badStep = kernelText("", "dst = nonsense;", "Step");
  const struct {
    const char *declarations, *statements, *info, *output;
  } cases[] = {
      {"", "dst = nonsense;",
       "!!!Sample vertex shader failed to compile\n!!!Sample fragment shader failed to compile\n",
       "*********** fglsl **********\n#define parameter uniform\n"},
      {"dependent float2 d; void evaluateDependents() { d = nonsense; }", kCopy,
       "!!!Sample vertex shader failed to compile\n",
       "*********** vglsl **********\n\n#define vlmk_VERTEX_SHADER\n"},
      {"float4 later(float2 at);", "dst = later(outCoord());", "!!!Sample program failed to link\n",
       ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.info);
    Effect& effect = session.kernel(World(9, 7, PF_PixelFormat_ARGB32),
                                    kernelText(c.declarations, c.statements));
    const std::string info = session.takeInfo();
    EXPECT_EQ(info, c.info + std::string("Kernel has been loaded from file: / Sample"));
    const std::string output = session.host.standardOutput();
    EXPECT_NE(output.find(c.output), std::string::npos) << output;
    EXPECT_EQ(output.empty(), !*c.output) << output;
    session.render(effect);
  }
  // Equal nodes have one program, and it fails once.
  session.graph(World(9, 7, PF_PixelFormat_ARGB32), chain(3, badStep).str());
  const std::string info = session.takeInfo();
  EXPECT_EQ(info.find("!!!n0 vertex shader failed to compile\n!!!n0 fragment"), 0u);
  EXPECT_EQ(info.find("!!!n1"), std::string::npos) << info;
}

TEST(Loading, ProgramsThatAskForTooMuchAreRefused) {
  Session session;
  std::string inputs = "input image4 a", nodes;
  for (int i = 0; i < 1024; ++i)
    inputs += " a";
  for (int i = 0; i < 17000; ++i)
    nodes += "<inputImage/>";
  const World picture(9, 7, PF_PixelFormat_ARGB32);
  EXPECT_EQ(session.kernel(picture, kernelText(inputs + ";", kCopy)).title, "VTD: (Invalid PB)");
  EXPECT_EQ(session.takeInfo().find("Program refused: more than 1024 inputs of a kernel / "), 0u);
  EXPECT_EQ(session.graph(picture, "<graph>" + nodes + "</graph>").title, "VTD: (Invalid PB)");
  EXPECT_EQ(session.takeInfo().find("Program refused: more than 16384 nodes and images"), 0u);
}

// A host that calls the module again while it is told of something.
struct Interruption {
  const SPBasicSuite* host = nullptr;
  SPBasicSuite basic{};
  PF_AdvAppSuite1 app{};
  std::function<void()> act;
} interruption;

SPErr acquireInterrupted(const char* name, int32_t version, const void** suite) {
  const SPErr error = interruption.host->AcquireSuite(name, version, suite);
  if (error || std::string(name) != "PF AE Adv App Suite") return error;
  static PF_AdvAppSuite1 real;
  real = *static_cast<const PF_AdvAppSuite1*>(*suite);
  interruption.app = real;
  interruption.app.PF_InfoDrawText3 = [](const A_char* a, const A_char* b, const A_char* c) {
    if (const auto act = std::exchange(interruption.act, nullptr)) act();
    return real.PF_InfoDrawText3(a, b, c);
  };
  *suite = &interruption.app;
  return error;
}

// The host, told of a shader, makes another instance with the same file: the program that was
// complete first serves both.
TEST(Loading, AFileThatIsLoadedDuringItsOwnBuildHasOneProgram) {
  Session session(HostOptions{.captureOutput = true});
  const std::string path = session.file("a.pbk", kernelText("parameter float gain;", "oh no"));
  Effect& outer = session.host.newInstance(session.layer(World(9, 7, PF_PixelFormat_ARGB32)));
  ASSERT_EQ(session.host.sequenceSetdown(outer), PF_Err_NONE);
  outer.layer().addMarker(path);
  session.takeInfo();
  Effect* inner = nullptr;
  interruption.act = [&] {
    inner = &session.host.newInstance(session.layer(World(9, 7, PF_PixelFormat_ARGB32), path));
  };
  CallArguments arguments;
  arguments.adjust = [](PF_InData& in, PF_OutData&) {
    interruption.host = in.pica_basicP;
    interruption.basic = *in.pica_basicP;
    interruption.basic.AcquireSuite = acquireInterrupted;
    in.pica_basicP = &interruption.basic;
  };
  ASSERT_EQ(session.host.call(PF_Cmd_SEQUENCE_SETUP, &outer, arguments), PF_Err_NONE);
  ASSERT_TRUE(inner);
  const std::string info = session.takeInfo();
  const std::string last = "Kernel has been loaded from memory / Sample";
  EXPECT_NE(info.find("Kernel has been loaded from file: / Sample"), std::string::npos) << info;
  EXPECT_EQ(info.find(last), info.size() - last.size()) << info;
  for (Effect* effect : {&outer, inner}) {
    EXPECT_EQ(session.host.updateParamsUi(*effect), PF_Err_NONE);
    EXPECT_TRUE(effect->findShown("gain"));
    session.render(*effect);
  }
}

}  // namespace
}  // namespace vellumtide::end_to_end
