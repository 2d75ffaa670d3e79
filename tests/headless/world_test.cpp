#include "headless/world.h"

#include <gtest/gtest.h>

namespace vellumtide::headless {
namespace {

using Channels = std::vector<double>;

TEST(World, ConversionsKeepEveryStep) {
  World steps(256, 1, PF_PixelFormat_ARGB32);
  for (int i = 0; i < 256; ++i)
    steps.setPixel(i, 0, i / 255.0, 1 - i / 255.0, 0.5, 1);
  for (PF_PixelFormat format : {PF_PixelFormat_ARGB64, PF_PixelFormat_ARGB128}) {
    const World back = convertWorld(convertWorld(steps, format), PF_PixelFormat_ARGB32);
    EXPECT_EQ(back.checksum(), steps.checksum()) << pixelFormatName(format);
  }
  World wild(1, 1, PF_PixelFormat_ARGB128);
  wild.setPixel(0, 0, -1, 7, 0.25, 1);
  EXPECT_EQ(convertWorld(wild, PF_PixelFormat_ARGB64).pixel(0, 0), (Channels{0, 1, 0.25, 1}));
}

TEST(World, DownsamplingMeansColoursByAlpha) {
  World world(3, 2, PF_PixelFormat_ARGB128, {16, -6, 4});
  world.setPixel(0, 0, 1, 0, 0, 1);
  world.setPixel(1, 0, 0, 1, 0, 0);  // transparent: its colour does not count
  world.setPixel(0, 1, 1, 0, 0, 1);
  world.setPixel(1, 1, 0, 1, 0, 1);
  world.setPixel(2, 0, 0.5, 0.5, 0.5, 0);
  world.setPixel(2, 1, 0.5, 0.5, 0.5, 0);
  const World half = downsampleWorld(world, {1, 2}, {1, 2});
  ASSERT_EQ(half.width(), 2);
  ASSERT_EQ(half.height(), 1);
  EXPECT_EQ(half.rect().left, -3);
  const Channels mean = half.pixel(0, 0);
  EXPECT_NEAR(mean[0], 2 / 3.0, 1e-6);
  EXPECT_NEAR(mean[1], 1 / 3.0, 1e-6);
  EXPECT_EQ(mean[3], 0.75);
  EXPECT_EQ(half.pixel(1, 0), (Channels{0.5, 0.5, 0.5, 0}));
  const World twoThirds = downsampleWorld(world, {2, 3}, {1, 1});
  EXPECT_EQ(twoThirds.width(), 2);
}

TEST(World, CopiesAndMovesOwnTheirPixels) {
  World world(2, 2, PF_PixelFormat_ARGB64, {32, 5, 6});
  world.setPixel(1, 1, 1, 0.5, 0, 1);
  World copy = world;
  const World moved = std::move(world);
  EXPECT_EQ(copy.checksum(), moved.checksum());
  copy.row(1)[0] ^= 1;
  EXPECT_NE(copy.checksum(), moved.checksum());
  EXPECT_EQ(copy.damage(), "");
  copy.row(0)[16] = 0;
  EXPECT_EQ(copy.damage(), "row padding of row 0");
  World empty(0, 5, PF_PixelFormat_ARGB32, {0, 0, 0});
  EXPECT_EQ(empty.damage(), "");
  EXPECT_THROW(World(1 << 30, 1, PF_PixelFormat_ARGB128), std::invalid_argument);
}

}  // namespace
}  // namespace vellumtide::headless
