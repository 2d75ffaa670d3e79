// The general heap ends at the n-th allocation of the module, for many n of every command: the
// command ends with its documented result or out of memory, and the next one works.
#include <algorithm>
#include <cstdio>

#include "tests/instances/module_memory.h"
#include "tests/instances/whole_life.h"

namespace vellumtide::instances {
namespace {

int refuseHeapIn(const Stage& stage) {
  Scene scene;
  scene.makeShown();
  scene.close();
  int count = 0;
  // Commands have thousands of allocations: each of the first, then fewer and fewer.
  for (int n = 1;; n += 1 + n / 16) {
    stage.prepare(scene);
    SCOPED_TRACE(std::string(stage.name) + ", allocation " + std::to_string(n));
    refuseModuleMemory(n);
    const PF_Err result = stage.act(scene);
    const bool refused = moduleMemoryWasRefused();
    refuseModuleMemory(0);
    EXPECT_TRUE(result == PF_Err_OUT_OF_MEMORY || result == PF_Err_NONE ||
                std::count(stage.results.begin(), stage.results.end(), result) > 0)
        << result;
    EXPECT_EQ(scene.host().books().faultText(), "");
    scene.expectWorks();
    scene.close();
    if (::testing::Test::HasFailure() || !refused) return count;
    ++count;
  }
}

TEST(HeapRefusals, OfAnyAllocationOfEveryCommand) {
  for (const Stage& stage : wholeLife()) {
    const int count = refuseHeapIn(stage);
    std::printf("%-32s %5d allocations refused\n", stage.name, count);
    if (HasFailure()) break;
  }
}

}  // namespace
}  // namespace vellumtide::instances
