#include "core/command_scope.h"

#include <cstring>
#include <memory>

#include "core/ae_base.h"
#include "tests/support/room_host.h"

namespace vellumtide {
namespace {

using testing::RoomHost;

TEST(CommandScope, NestsAndAnswersForTheInnermostContextOnly) {
  RoomHost().run(
      [](PF_InData* in) {
        const CommandScope outer(PF_Cmd_SMART_RENDER, in, 5);
        EXPECT_EQ(orContextFlags(6), 6u);
        {
          const CommandScope inner(PF_Cmd_ABOUT, in, 9);
          EXPECT_EQ(outer.next, &inner);
          EXPECT_EQ(contextPluginId(), 9);
          EXPECT_EQ(readAndClearContextFlags(), 0u);
        }
        {
          const CommandScope bare(99, nullptr, 0);
          EXPECT_EQ(currentInData(), nullptr);
          EXPECT_EQ(currentSuites(), nullptr);
          EXPECT_EQ(allocateHostMemory(8), nullptr);
          EXPECT_STREQ(bare.commandName, "");
        }
        EXPECT_EQ(CommandScope::top(), &outer);
        EXPECT_EQ(outer.next, nullptr);
        EXPECT_EQ(contextPluginId(), 5);
        EXPECT_EQ(currentPluginId, 0) << "an inner scope's id stays";
        EXPECT_EQ(readAndClearContextFlags(), 6u);
      },
      false);
  EXPECT_EQ(CommandScope::top(), nullptr);
}

TEST(CommandScope, OpensWithoutMemoryForItsContext) {
  RoomHost room;
  for (int refused = 1; refused <= 2; ++refused) {
    room.host.gate().refuseNth(static_cast<uint64_t>(refused));
    room.run([](PF_InData*) { EXPECT_EQ(currentInData(), nullptr); });
  }
}

TEST(SuiteHandler, AcquiresEachSuiteOnceForTheScope) {
  RoomHost room;
  room.run([&room](PF_InData*) {
    const auto& first = currentSuites()->get<PF_AdvAppSuite1>();
    room.host.gate().refuseNth(1);
    EXPECT_EQ(&currentSuites()->get<PF_AdvAppSuite1>(), &first);
    EXPECT_THROW(currentSuites()->get<AEGP_MemorySuite1>(), PF_Err);
  });
}

TEST(HostMemory, KeepsItsHandleInFrontAndAlignsOnRequest) {
  RoomHost room;
  struct Object : aeBase {};
  room.run([&room](PF_InData* in) {
    void* block = allocateHostMemory(24);
    const PF_Handle handle = handleOfHostMemory(block);
    EXPECT_EQ(in->utils->host_get_handle_size(handle), 32u);
    EXPECT_EQ(static_cast<char*>(*handle) + 8, block);
    EXPECT_EQ(hostMemoryOfHandle(handle), block);
    freeHostMemory(block);
    freeHostMemory(nullptr);
    for (std::size_t alignment = 16; alignment <= 4096; alignment *= 2) {
      void* aligned = allocateAlignedHostMemory(5, alignment);
      EXPECT_EQ(reinterpret_cast<std::size_t>(aligned) % alignment, 0u);
      std::memset(aligned, 1, 5);
      freeAlignedHostMemory(aligned);
    }
    EXPECT_EQ(allocateHostMemory(~std::size_t{0}), nullptr);
    EXPECT_NE(std::unique_ptr<Object>(new Object), nullptr);
    room.host.gate().refuseNth(1);
    EXPECT_THROW(newOrThrow<Object>(), PF_Err);
  });
  Object* outside = new Object;
  EXPECT_EQ(outside, nullptr);
}

}  // namespace
}  // namespace vellumtide
