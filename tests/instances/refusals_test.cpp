// The host refuses the n-th call of a command, for every n of every command of a whole life: the
// command ends with its documented result, the host's books stay right, its GL context is current
// again, and the next command works.
#include <algorithm>
#include <cstdio>

#include "tests/instances/whole_life.h"

namespace vellumtide::instances {
namespace {

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
    scene.expectWorks();
    scene.close();
    if (::testing::Test::HasFailure() || !refused) return n - 1;
  }
}

TEST(Refusals, OfEveryCallOfEveryCommand) {
  int injected = 0;
  for (const Stage& stage : wholeLife()) {
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
