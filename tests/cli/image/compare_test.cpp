#include <nlohmann/json.hpp>

#include "cli/image/image_difference.h"
#include "tests/support/command_line.h"

namespace vellumtide::cli {
namespace {

using headless::World;
using Json = nlohmann::json;

class Compare : public CommandLine {
 protected:
  // 4 x 2 pixels of half-bright grey, one of them changed.
  static World picture(PF_PixelFormat format, std::vector<double> rgba = {0.5, 0.5, 0.5, 1}) {
    World world(4, 2, format);
    for (int i = 0; i < 8; ++i)
      world.setPixel(i % 4, i / 4, 0.5, 0.5, 0.5, 1);
    world.setPixel(2, 1, rgba[0], rgba[1], rgba[2], rgba[3]);
    return world;
  }
  void write(const std::string& name, const World& world, WriteOptions options = {}) {
    writeImageFile(file(name), world, 1, options);
  }
  Json figures(const std::string& arguments) {
    const Outcome outcome = run("compare --json " + arguments);
    EXPECT_EQ(outcome.status, outcome.error.empty() ? 0 : 1) << outcome.error;
    return Json::parse(outcome.out);
  }
};

TEST_F(Compare, FiguresPlaceAndStatusFollowTheTolerance) {
  write("a.png", picture(PF_PixelFormat_ARGB32));
  write("b.png", picture(PF_PixelFormat_ARGB32, {0.5, 0.5 + 10.5 / 255, 0.5 - 1.5 / 255, 1}));
  const Json json = figures("a.png b.png");
  const auto expectNear = [](const Json& value, double expected) {
    EXPECT_NEAR(value.get<double>(), expected, 1e-9);
  };
  EXPECT_EQ(json["largest"]["channel"], "green");
  EXPECT_EQ(json["largest"]["x"], 2);
  EXPECT_EQ(json["largest"]["y"], 1);
  expectNear(json["largest"]["difference"], 10.0 / 255);
  expectNear(json["largest"]["a"], 128.0 / 255);
  expectNear(json["largest"]["b"], 138.0 / 255);
  expectNear(json["mean"], 12.0 / 255 / 32);
  expectNear(json["rms"], std::sqrt(104.0 / 32) / 255);
  expectNear(json["psnr"], 20 * std::log10(255 / std::sqrt(104.0 / 32)));
  EXPECT_EQ(json["differing"], 1);
  EXPECT_EQ(json["share"], 0.125);

  expectEndings("compare ", {
                                {"a.png a.png", 0, ""},
                                {"a.png b.png", 1, "a.png and b.png differ in 1 of 8 pixels"},
                                {"a.png b.png --tolerance 10/255", 0, ""},
                                {"a.png b.png --tolerance 0.0392", 1, "at 2,1 in green"},
                                {"a.png b.png --allow 1", 0, ""},
                                {"a.png b.png --allow 12.5%", 0, ""},
                                {"a.png b.png --allow 12.4%", 1, "differ"},
                                {"a.png missing.png", 4, "missing.png: there is no such file"},
                                {"a.png b.png -o nowhere/d.png", 4, "there is no folder"},
                                {"a.png b.png --tolerance -1", 2, "--tolerance"},
                                {"a.png b.png --tolerance 1/0", 2, "--tolerance"},
                                {"a.png b.png --allow %", 2, "--allow"},
                                {"a.png b.png --amplify 0", 2, "--amplify"},
                                {"a.png b.png --frames 1-2", 2, "####"},
                            });
}

TEST_F(Compare, WhatIsNotFiniteEqualsOnlyItself) {
  const double nan = std::nan(""), inf = INFINITY;
  World a = picture(PF_PixelFormat_ARGB128, {nan, inf, -inf, 1}), b = a;
  EXPECT_EQ(compareImages(a, b, {}).differing, 0u);
  b.setPixel(2, 1, nan, -inf, -inf, 1);
  b.setPixel(0, 0, 0.5, 0.75, 0.5, 1);
  b.setPixel(1, 0, nan, 0.5, 0.5, 1);
  const ImageDifference d = compareImages(a, b, {.tolerance = 1000});
  EXPECT_EQ(d.differing, 2u);
  EXPECT_EQ(d.unbounded, 2u);
  EXPECT_EQ(d.x, 1);
  EXPECT_TRUE(std::isinf(d.largest));
  EXPECT_EQ(d.largestFinite, 0.25);
  EXPECT_EQ(d.notFinite, 2u);
  EXPECT_NEAR(d.mean, 0.25 / 28, 1e-12);
  const World shown = differencePicture(a, b, {}, 2, PF_PixelFormat_ARGB32);
  expectPixel(shown, 0, 0, {0, 0.5, 0, 1}, 0.003);
  expectPixel(shown, 1, 0, {1, 0, 0, 1}, 0);
  expectPixel(shown, 3, 1, {0, 0, 0, 1}, 0);
}

TEST_F(Compare, SizesDepthsAlphaAndFrames) {
  // One step of 16 bits is seen, and the same values in 8 and 16 bits are equal.
  World deep = picture(PF_PixelFormat_ARGB128, {0.5 + 1.5 / 65535, 0.5, 0.5, 1});
  write("a.1.tif", picture(PF_PixelFormat_ARGB128), {.sampleType = SampleType::UInt16});
  write("b.1.tif", deep, {.sampleType = SampleType::UInt16});
  EXPECT_EQ(figures("a.1.tif b.1.tif")["largest"]["difference"], 1.0 / 65535);
  EXPECT_EQ(run("compare a.1.tif b.1.tif --tolerance 1/65535").status, 0);
  World grey = picture(PF_PixelFormat_ARGB32, {0.2, 0.4, 0.6, 1});
  write("a.2.tif", grey);
  write("b.2.tif", grey, {.sampleType = SampleType::UInt16});
  EXPECT_EQ(figures("a.2.tif b.2.tif")["differing"], 0);
  const Outcome frames = run("compare a.#.tif b.#.tif --frames 1-2 -o d.#.tif --amplify auto");
  EXPECT_EQ(frames.status, 1);
  EXPECT_NE(frames.out.find("frame 2: are equal"), std::string::npos) << frames.out;
  EXPECT_NE(frames.error.find("1 of 2 frames differ"), std::string::npos) << frames.error;
  expectPixel(readImageFile(file("d.1.tif")).pixels, 2, 1, {1, 0, 0, 1}, 1e-6);

  // Colour under zero alpha, and alpha itself.
  write("hidden.png", picture(PF_PixelFormat_ARGB32, {1, 0, 0, 0}));
  write("other.png", picture(PF_PixelFormat_ARGB32, {0, 0, 1, 0}));
  write("faint.png", picture(PF_PixelFormat_ARGB32, {1, 0, 0, 0.2}));
  EXPECT_EQ(figures("hidden.png other.png")["differing"], 1);
  EXPECT_EQ(figures("hidden.png other.png --ignore-hidden")["differing"], 0);
  EXPECT_EQ(figures("hidden.png faint.png --no-alpha")["differing"], 0);
  EXPECT_EQ(figures("hidden.png faint.png --ignore-hidden -o d.png")["largest"]["channel"],
            "alpha");
  expectPixel(readImageFile(file("d.png")).pixels, 2, 1, {0.2, 0.2, 0.2, 1}, 1e-6);

  write("small.png", World(2, 2, PF_PixelFormat_ARGB32));
  const Outcome sizes = run("compare hidden.png small.png");
  EXPECT_EQ(sizes.status, 1);
  EXPECT_NE(sizes.error.find("differ in size: 4 x 2"), std::string::npos) << sizes.error;
}

}  // namespace
}  // namespace vellumtide::cli
