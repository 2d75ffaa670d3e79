// A kernel that only copies returns every value as it was, bit for bit, at every depth, wherever
// the picture lies and whichever part is asked for.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "tests/support/pictures.h"
#include "tests/support/session.h"

namespace vellumtide::end_to_end {
namespace {

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

TEST(PassThrough, EveryDepthPlaceAndPartIsUnchanged) {
  const struct {
    int width, height;
    WorldLayout layout;
    std::optional<PF_LRect> request;
    PF_LRect covered;  // of the picture's pixels
  } kCases[] = {
      {1, 1, {}, {}, {0, 0, 1, 1}},
      {333, 77, {48, 0, 0}, {}, {0, 0, 333, 77}},
      {17, 13, {}, PF_LRect{5, 3, 12, 9}, {5, 3, 12, 9}},
      // The buffer and the texture cover the part inside the composition alone, so that the last
      // five columns and three rows fall off.
      {40, 30, {16, 5, 3}, {}, {0, 0, 30, 24}},
  };
  Session session;
  const std::string path =
      session.file("copy.pbk", kernelText("", "dst = sampleNearest(src, outCoord());"));
  for (const PF_PixelFormat format : kFormats) {
    for (const auto& c : kCases) {
      SCOPED_TRACE(pixelFormatName(format) + std::string(" ") + std::to_string(c.width));
      const World picture = everyValue(c.width, c.height, format, c.layout);
      const RenderResult frame =
          session.host.render(session.effect(picture, path),
                              {.format = format, .request = c.request, .outputPadding = 16});
      ASSERT_EQ(frame.error, PF_Err_NONE);
      const World& output = *frame.output;
      const int left = c.covered.left, size = bytesPerPixel(format);
      EXPECT_EQ(output.rect().left, c.layout.originX + left);
      EXPECT_EQ(output.rect().top, c.layout.originY + c.covered.top);
      ASSERT_TRUE(c.layout.originX > 0 || output.width() == c.covered.right - left);
      for (int y = c.covered.top; y < c.covered.bottom; ++y) {
        const auto bytes = static_cast<std::size_t>((c.covered.right - left) * size);
        ASSERT_EQ(std::memcmp(picture.row(y) + left * size, output.row(y - c.covered.top), bytes),
                  0)
            << "row " << y;
      }
    }
  }
}

}  // namespace
}  // namespace vellumtide::end_to_end
