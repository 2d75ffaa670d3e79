// A module's life from set-up to set-down, with the host counting.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "tests/support/graph_text.h"
#include "tests/support/pictures.h"
#include "tests/support/resident_memory.h"
#include "tests/support/session.h"

namespace vellumtide::end_to_end {
namespace {

constexpr int kSizes[][2] = {{64, 48}, {333, 77}, {1, 1}, {640, 360}, {17, 13}};

// 0 where it says nothing.
long residentKilobytes() {
#ifdef VELLUMTIDE_SANITIZED
  return 0;
#else
  return residentBytes() / 1024;
#endif
}

// Frame `number` of a life: another size and depth each time.
void renderFrame(Session& session, Effect& effect, int number) {
  const auto& size = kSizes[number % std::size(kSizes)];
  const PF_PixelFormat format = kFormats[number % std::size(kFormats)];
  effect.layer().setPixels(randomWorld(size[0], size[1], format));
  const A_u_long half = number % 4 == 3 ? 2 : 1;
  session.render(effect, {.format = format, .downsampleX = {1, half}, .downsampleY = {1, half}});
}

std::string twoNodes() {
  const std::string blend = kernelText(
      "input image4 a; input image4 b; parameter float amount; dependent int n;"
      "void evaluateDependents() { n = 2; }",
      "dst = mix(sampleNearest(a, outCoord()), sampleLinear(b, outCoord() + float(n)), amount);",
      "Blend");
  return GraphText("life")
      .parameter("amount", "float", "0.5")
      .kernel(blend)
      .node("one", "Blend", "one::amount = amount;")
      .node("two", "Blend", "two::amount = amount;")
      .wire("a=image b=image a>one.a b>one.b one>two.a a>two.b two>out")
      .str();
}

TEST(LifeCycle, SetUpReportsAndUnknownCommandsDoNothing) {
  Session session;
  Host& host = session.host;
  EXPECT_EQ(host.registeredName, "Vellumtide");
  Effect& effect = session.kernel(randomWorld(8, 8, PF_PixelFormat_ARGB32),
                                  kernelText("", "dst = sampleNearest(src, outCoord());"));
  EXPECT_EQ(host.declaredParams().size(), 124u);
  const Holdings before = host.holdings();
  for (const PF_Cmd command : {2, 10, 12, 13, 15, 16, 17, 18, 19, 20, 21, 22, 25, 26, 99, -1}) {
    const uint64_t calls = host.gate().count(CallKind::kSuiteCall);
    EXPECT_EQ(host.call(command, &effect), PF_Err_NONE) << command;
    EXPECT_EQ(host.call(command, nullptr, {.withInData = false}), PF_Err_NONE) << command;
    EXPECT_EQ(host.gate().count(CallKind::kSuiteCall), calls) << command;
    EXPECT_EQ(host.holdings(), before) << command;
  }
  host.closeInstance(effect);
  EXPECT_EQ(host.globalSetdown(), PF_Err_NONE);
  EXPECT_EQ(host.globalSetdown(), PF_Err_NONE) << "without global data";
  EXPECT_EQ(host.globalSetup(), PF_Err_NONE);
  EXPECT_EQ(host.lastCall().outFlags, 0x06000031);
  EXPECT_EQ(host.lastCall().outFlags2, 0x00001400);
}

TEST(LifeCycle, MemoryDoesNotGrow) {
  if (residentKilobytes() == 0) GTEST_SKIP() << "the size of the process is not known";
  Session session;
  Effect& effect = session.graph(World(8, 8, PF_PixelFormat_ARGB32), twoNodes());
  // The driver frees late, so the least of many frames counts.
  const auto leastKilobytes = [&](int first, int last) {
    long least = std::numeric_limits<long>::max();
    for (int frame = first; frame < last; ++frame) {
      renderFrame(session, effect, frame);
      least = std::min(least, residentKilobytes());
    }
    return least;
  };
  leastKilobytes(0, 20);
  const long early = leastKilobytes(20, 60);
  leastKilobytes(60, 160);
  constexpr long kNoise = 4096;
  EXPECT_LT(leastKilobytes(160, 200) - early, kNoise);
}

}  // namespace
}  // namespace vellumtide::end_to_end
