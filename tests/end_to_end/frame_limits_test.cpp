// Frames at the edge of what fits: other layers, parts of the frame, frames too large to draw.
#include <gtest/gtest.h>

#include <cstring>

#include "tests/support/graph_text.h"
#include "tests/support/pictures.h"
#include "tests/support/session.h"

namespace vellumtide::end_to_end {
namespace {

constexpr int kWidth = 17, kHeight = 13;
constexpr PF_LRect kWhole = {0, 0, kWidth, kHeight};

// Image nodes give their pixels back with the last channel first.
Rgba asImage(const World& world, int x, int y) {
  if (x >= world.width() || y >= world.height()) return {0, 0, 0, 0};
  const Rgba pixel = pixelAt(world, x, y);
  return {pixel[1], pixel[0], pixel[3], pixel[2]};
}

// The host looks after what lies around the pixels.
TEST(FrameLimits, ImagesAsOutputFillWhateverIsAskedFor) {
  Session session;
  const std::string images = "a=image b=image n=Copy a>n.src ";
  const std::string copy = kernelText("", "dst = sampleNearest(src, outCoord());", "Copy");
  for (const PF_PixelFormat format : kFormats) {
    const World own = randomWorld(kWidth, kHeight, format, {4, 0, 0});
    for (const auto& size : {std::pair{40, 30}, {5, 4}, {17, 2}, {17, 13}, {1, 60}}) {
      const World other = randomWorld(size.first, size.second, format, {12, 0, 0});
      const Layer& otherLayer = session.layer(other);
      for (const bool isOther : {false, true}) {
        Effect& effect = session.graph(
            own, GraphText().kernel(copy).wire(images + (isOther ? "b>out" : "a>out")).str());
        setLayer(effect, "b", &otherLayer);
        for (const PF_LRect& part : {kWhole, PF_LRect{5, 3, 12, 9}, PF_LRect{0, 0, 1, 1}}) {
          for (const int padding : {0, 4, 16, 3}) {
            const World frame = session.render(
                effect, {.format = format, .request = part, .outputPadding = padding});
            ASSERT_EQ(frame.width(), part.right - part.left);
            for (int y = part.top; y < part.bottom; ++y) {
              for (int x = part.left; x < part.right; ++x) {
                ASSERT_EQ(pixelAt(frame, x - part.left, y - part.top),
                          asImage(isOther ? other : own, x, y))
                    << x << ", " << y << " of " << size.first << " x " << size.second;
              }
            }
          }
        }
        session.host.closeInstance(effect);
      }
    }
  }
}

// A layer that begins at (5, 3) has 35 x 27 pixels inside the composition, and so has the frame.
// What the buffer shows beyond that is transparent, whatever it held before.
TEST(FrameLimits, NothingIsLeftOfTheBuffersOldPixels) {
  Session session;
  const World picture = randomWorld(40, 30, PF_PixelFormat_ARGB32, {16, 5, 3});
  Effect& effect = session.kernel(picture, kernelText("", "dst = sampleNearest(src, outCoord());"));
  World output(35, 27, PF_PixelFormat_ARGB32, {16, 5, 3});
  output.fillBytes(0x5A);
  EXPECT_FALSE(session.host.render(effect, {.output = &output}).output);
  const Formula expected = [&](const Rgba&, int x, int y) {
    return x < 30 && y < 24 ? pixelAt(picture, x, y) : Rgba{0, 0, 0, 0};
  };
  EXPECT_EQ(differences(output, output, expected), "");
}

TEST(FrameLimits, FramesThatNoTextureHoldsAreAnErrorWithItsReason) {
  constexpr int kTooLarge = 70000;
  Session session;
  const std::string kernel = kernelText("", "dst = sampleNearest(src, outCoord());");
  for (const PF_PixelFormat format : kFormats) {
    Effect& effect = session.kernel(World(kTooLarge, 1, format), kernel);
    session.takeInfo();
    World output(kTooLarge, 1, format);
    output.fillBytes(0x5A);
    EXPECT_EQ(session.host.render(effect, {.format = format, .output = &output}).error,
              PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(output.checksum(), World(kTooLarge, 1, format).checksum());
    const std::string info = session.takeInfo();
    EXPECT_EQ(info.find("Frame of 70000 x 1 pixels not drawn: OpenGL's largest texture has "), 0u)
        << info;
    EXPECT_EQ(info.find('\n'), std::string::npos) << info;

    const World small = randomWorld(5, 4, format);
    effect.layer().setPixels(small);
    const Formula same = [](const Rgba& source, int, int) { return source; };
    EXPECT_EQ(differences(small, session.render(effect, {.format = format}), same), "");
    EXPECT_EQ(session.takeInfo(), "");
  }
}

}  // namespace
}  // namespace vellumtide::end_to_end
