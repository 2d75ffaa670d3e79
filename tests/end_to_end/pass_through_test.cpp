// A kernel that only copies returns every value as it was.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "tests/support/pictures.h"
#include "tests/support/session.h"

namespace vellumtide::end_to_end {
namespace {

const char* const kCopy = "dst = sampleNearest(src, outCoord());";

// Counts through every value a channel can have, or through the floats that are easily lost.
World everyValue(int width, int height, PF_PixelFormat format, WorldLayout layout) {
  using Limits = std::numeric_limits<float>;
  constexpr float kFloats[] = {0.0f,    -0.0f,          1.0f,        -1.0f,         0.1f,
                               -0.1f,   1.0f / 3,       1.00000012f, 2.5f,          -1000.25f,
                               65504.f, 3e9f,           -1e20f,      Limits::max(), Limits::min(),
                               1e-6f,   -Limits::max(), 16777217.f,  0.99999994f,   1e-30f};
  World world(width, height, format, layout);
  std::size_t next = 0;
  for (int y = 0; y < height; ++y) {
    for (int i = 0; i < width * 4; ++i, ++next) {
      const auto deep = static_cast<uint16_t>(next % 32769);
      const float value = kFloats[next % std::size(kFloats)];
      if (format == PF_PixelFormat_ARGB128) std::memcpy(world.row(y) + i * 4, &value, 4);
      if (format == PF_PixelFormat_ARGB64) std::memcpy(world.row(y) + i * 2, &deep, 2);
      if (format == PF_PixelFormat_ARGB32) world.row(y)[i] = static_cast<uint8_t>(next);
    }
  }
  return world;
}

// Where the first `width` times `height` pixels of two worlds differ, "" when they are the same.
std::string firstDifference(const World& a, const World& b, int width, int height) {
  const int size = bytesPerPixel(a.format());
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      if (std::memcmp(a.row(y) + x * size, b.row(y) + x * size, size) == 0) continue;
      return "(" + std::to_string(x) + ", " + std::to_string(y) + ") " +
             ::testing::PrintToString(a.pixel(x, y)) + " became " +
             ::testing::PrintToString(b.pixel(x, y));
    }
  }
  return "";
}

TEST(PassThrough, EverySizeDepthAndPaddingIsUnchanged) {
  Session session;
  const std::string path = session.file("copy.pbk", kernelText("", kCopy));
  constexpr int kSizes[][2] = {{1, 1}, {1, 37}, {17, 13}, {333, 77}, {2, 1}};
  for (const auto& size : kSizes) {
    for (const PF_PixelFormat format : kFormats) {
      for (const int padding : {0, 16, 48}) {
        const World picture = everyValue(size[0], size[1], format, {padding, 0, 0});
        Effect& effect = session.effect(picture, path);
        const RenderResult frame =
            session.host.render(effect, {.format = format, .outputPadding = 64 - padding});
        ASSERT_EQ(frame.error, PF_Err_NONE);
        EXPECT_EQ(frame.output->width(), size[0]);
        EXPECT_EQ(frame.output->height(), size[1]);
        EXPECT_EQ(firstDifference(picture, *frame.output, size[0], size[1]), "")
            << pixelFormatName(format) << " " << size[0] << " x " << size[1];
        session.host.closeInstance(effect);
      }
    }
  }
}

// A layer that begins at (5, 3): its buffer covers the part inside the composition, and so does
// the texture, so that the last five columns and three rows fall off.
TEST(PassThrough, PicturesMayBeginAwayFromTheOrigin) {
  Session session;
  const std::string path = session.file("copy.pbk", kernelText("", kCopy));
  for (const PF_PixelFormat format : kFormats) {
    const World picture = everyValue(40, 30, format, {16, 5, 3});
    const RenderResult frame =
        session.host.render(session.effect(picture, path), {.format = format});
    ASSERT_EQ(frame.error, PF_Err_NONE);
    EXPECT_EQ(frame.output->rect().left, 5);
    EXPECT_EQ(frame.output->rect().top, 3);
    EXPECT_EQ(firstDifference(picture, *frame.output, 30, 24), "");
  }
}

TEST(PassThrough, ARequestedRectangleComesFromItsPlace) {
  Session session;
  const std::string path = session.file("copy.pbk", kernelText("", kCopy));
  for (const PF_PixelFormat format : kFormats) {
    const World picture = everyValue(17, 13, format, {});
    Effect& effect = session.effect(picture, path);
    const RenderResult frame =
        session.host.render(effect, {.format = format, .request = PF_LRect{5, 3, 12, 9}});
    ASSERT_TRUE(frame.output);
    ASSERT_EQ(frame.output->width(), 7);
    ASSERT_EQ(frame.output->height(), 6);
    for (int y = 0; y < 6; ++y) {
      for (int x = 0; x < 7; ++x) {
        ASSERT_EQ(frame.output->pixel(x, y), picture.pixel(x + 5, y + 3)) << x << ", " << y;
      }
    }
  }
}

}  // namespace
}  // namespace vellumtide::end_to_end
