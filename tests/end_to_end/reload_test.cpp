// The module loaded, used and unloaded over and over in one process, under a host that draws with a
// GL context of its own.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

#include "tests/support/pictures.h"
#include "tests/support/resident_memory.h"
#include "tests/support/session.h"

namespace vellumtide::end_to_end {
namespace {

// One life: the host's books show a context that is not given back.
void live(const std::string& kernel, const World& picture, int devices) {
  const std::shared_ptr<Module> module = Module::load(defaultModulePath());
  for (int i = 0; i < devices; ++i) {
    Host host(module, {.captureOutput = true});
    ASSERT_EQ(host.globalSetup(), PF_Err_NONE);
    Layer& layer = host.addComposition("comp").addLayer("layer", picture);
    layer.addMarker(kernel);
    Effect& effect = host.newInstance(layer);
    const RenderResult frame = host.render(effect);
    ASSERT_TRUE(frame.output);
    ASSERT_EQ(frame.output->checksum(), picture.checksum());
    host.finish();
    ASSERT_EQ(host.books().faultText(), "");
  }
}

TEST(Reload, ManyLivesInOneProcessLeaveNothingBehind) {
  const testing::ScratchFolder folder;
  folder.put("copy.pbk", kernelText("", "dst = sampleNearest(src, outCoord());"));
  const World picture = randomWorld(33, 21, PF_PixelFormat_ARGB32);
  const auto lives = [&](int modules, int devices) {
    for (int i = 0; i < modules && !HasFatalFailure(); ++i) {
      live(folder.path("copy.pbk"), picture, devices);
    }
    return residentBytes();
  };
  lives(5, 1);
  const long early = lives(1, 10);
  // Fifty devices and twenty loads of the module altogether.
  const long late = std::max(lives(14, 1), lives(1, 26));
  std::printf("resident: %.1f MB after 15 devices, %.1f MB after 55\n", early / 1e6, late / 1e6);
  if (early == 0) GTEST_SKIP() << "the size of the process is not known";
  EXPECT_LT(late - early, 12 << 20);
}

}  // namespace
}  // namespace vellumtide::end_to_end
