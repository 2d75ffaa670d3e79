#include <OpenImageIO/imageio.h>

#include <bit>
#include <cmath>

#include "cli/text/failure.h"
#include "tests/support/command_line.h"

namespace vellumtide::cli {
namespace {

using headless::World;

class ImageFiles : public CommandLine {
 protected:
  // A file of one row written by the library itself, channels as given.
  void writeRow(const std::string& name, OIIO::ImageSpec spec, const std::vector<float>& samples) {
    const auto output = OIIO::ImageOutput::create(file(name).string());
    ASSERT_TRUE(output && output->open(file(name).string(), spec)) << OIIO::geterror();
    ASSERT_TRUE(output->write_image(OIIO::TypeDesc::FLOAT, samples.data()));
    ASSERT_TRUE(output->close());
  }
  // The samples of a file as they are stored, as 16-bit integers or floats.
  template <typename T>
  std::vector<T> stored(const std::string& name) {
    OIIO::ImageSpec hints;
    hints.attribute("oiio:UnassociatedAlpha", 1);
    const auto input = OIIO::ImageInput::open(file(name).string(), &hints);
    std::vector<T> samples(std::size_t(input->spec().width) * input->spec().height *
                           input->spec().nchannels);
    input->read_image(0, 0, 0, -1, OIIO::BaseTypeFromC<T>::value, samples.data());
    return samples;
  }
};

// Every format, sample type and alpha there is: what was written comes back, and once more.
TEST_F(ImageFiles, RoundTrips) {
  const struct {
    const char* name;
    PF_PixelFormat format;
    std::optional<SampleType> type;
    double tolerance;
  } kCases[] = {
      {"a.png", PF_PixelFormat_ARGB32, {}, 0},
      {"b.png", PF_PixelFormat_ARGB64, {}, 0},
      {"c.tif", PF_PixelFormat_ARGB32, {}, 0.5},  // few steps of colour are left under low alpha
      {"d.tiff", PF_PixelFormat_ARGB64, {}, 0.002},
      {"e.TIF", PF_PixelFormat_ARGB128, {}, 1e-6},
      {"f.exr", PF_PixelFormat_ARGB128, {}, 1e-6},
      {"g.exr", PF_PixelFormat_ARGB128, SampleType::Half, 2e-3},
      {"h.exr", PF_PixelFormat_ARGB32, SampleType::Float, 1e-6},
      {"i.png", PF_PixelFormat_ARGB128, SampleType::UInt16, 2e-5},
  };
  for (const auto& [name, format, type, tolerance] : kCases) {
    SCOPED_TRACE(name);
    World world(3, 2, format);
    world.setPixel(0, 0, 1, 0.5, 0.25, 1);
    world.setPixel(1, 0, 0.75, 0.5, 0.0, 0.5);
    world.setPixel(2, 0, 0.25, 0.75, 1, 0);  // colour under zero alpha
    world.setPixel(0, 1, 1, 0.5, 0, 0.02);
    writeImageFile(file(name), world, 2.0, {.sampleType = type});
    const ImageFile back = readImageFile(file(name));
    EXPECT_EQ(back.pixelAspect, 2.0);
    for (int i = 0; i < 6; ++i) {
      expectPixel(back.pixels, i % 3, i / 3, world.pixel(i % 3, i / 3),
                  i == 3 ? tolerance : std::min(tolerance, 0.01));
    }
    if (back.pixels.format() != format) continue;
    writeImageFile(file(std::string("again") + name), back.pixels, 2.0, {.sampleType = type});
    EXPECT_EQ(stored<float>(std::string("again") + name), stored<float>(name));
  }
}

TEST_F(ImageFiles, SixteenBitsKeepEveryStep) {
  World world(32769, 1, PF_PixelFormat_ARGB64);
  for (int v = 0; v <= 32768; ++v) {
    const std::uint16_t argb[] = {32768, std::uint16_t(v), std::uint16_t(v), std::uint16_t(v)};
    std::copy_n(argb, 4, reinterpret_cast<std::uint16_t*>(world.row(0)) + 4 * std::size_t(v));
  }
  writeImageFile(file("ramp.png"), world, 1, {});
  const std::vector<std::uint16_t> samples = stored<std::uint16_t>("ramp.png");
  for (int v = 0; v <= 32768; v += 1) {
    ASSERT_EQ(samples[4 * std::size_t(v)], std::lround(v * 65535.0 / 32768)) << v;
  }
}

TEST_F(ImageFiles, FloatsAreLeftAlone) {
  const float values[] = {-2.5f, 0.f, 1e-30f, 7.25f, 65536.f, std::bit_cast<float>(0x3dcccccdu)};
  World world(6, 1, PF_PixelFormat_ARGB128);
  for (int x = 0; x < 6; ++x)
    world.setPixel(x, 0, values[x], values[x], values[x], 1);
  writeImageFile(file("a.exr"), world, 1, {});
  WriteOptions dropped;
  dropped.dropAlpha = true;
  writeImageFile(file("b.png"), world, 1, dropped);
  const std::vector<float> samples = stored<float>("a.exr");
  for (int x = 0; x < 6; ++x)
    EXPECT_EQ(samples[4 * x], values[x]);
  EXPECT_EQ(stored<std::uint16_t>("b.png").size(), 18u);  // three channels, held to black..white
  EXPECT_EQ(stored<std::uint16_t>("b.png")[9], 65535);
  EXPECT_EQ(readImageFile(file("a.exr")).pixels.checksum(), world.checksum());
}

TEST_F(ImageFiles, ChannelsAndAlphaConventions) {
  using OIIO::TypeDesc;
  const std::vector<std::string> grey = {"Y"}, both = {"Y", "A"}, two = {"R", "G"},
                                 rgb = {"R", "G", "B"}, rgba = {"R", "G", "B", "A"},
                                 more = {"R", "G", "B", "A", "Z"};
  constexpr auto k8 = PF_PixelFormat_ARGB32, k16 = PF_PixelFormat_ARGB64,
                 k32 = PF_PixelFormat_ARGB128;
  const struct {
    const char* name;
    std::vector<std::string> channels;
    TypeDesc type;
    int alpha;  // which channel
    std::vector<float> samples;
    std::vector<double> rgba;
    PF_PixelFormat format;
  } kCases[] = {
      {"grey.png", grey, TypeDesc::UINT8, -1, {0.4f}, {0.4, 0.4, 0.4, 1}, k8},
      {"ya.exr", both, TypeDesc::HALF, 1, {0.25f, 0.5f}, {0.5, 0.5, 0.5, 0.5}, k32},
      {"rgb.tif", rgb, TypeDesc::UINT16, -1, {1, 0.5f, 0}, {1, 0.5, 0, 1}, k16},
      {"rg.exr", two, TypeDesc::FLOAT, -1, {0.5f, 2}, {0.5, 2, 0, 1}, k32},
      {"more.exr", more, TypeDesc::FLOAT, 3, {0.5f, 1, 0, 0.5f, 9}, {1, 2, 0, 0.5}, k32},
      {"shared.tif", rgba, TypeDesc::UINT8, 3, {0.4f, 0.2f, 0, 0.4f}, {1, 0.5, 0, 0.4}, k8},
      {"straight.tif", rgba, TypeDesc::UINT8, 3, {0.4f, 0.2f, 0, 0.4f}, {0.4, 0.2, 0, 0.4}, k8},
      {"straight.png", rgba, TypeDesc::UINT8, 3, {0.4f, 0.2f, 0, 0.4f}, {0.4, 0.2, 0, 0.4}, k8},
  };
  for (const auto& test : kCases) {
    SCOPED_TRACE(test.name);
    OIIO::ImageSpec spec(1, 1, static_cast<int>(test.channels.size()), test.type);
    spec.channelnames = test.channels;
    spec.alpha_channel = test.alpha;
    if (std::string(test.name).starts_with("straight")) spec.attribute("oiio:UnassociatedAlpha", 1);
    writeRow(test.name, spec, test.samples);
    const ImageFile image = readImageFile(file(test.name));
    EXPECT_EQ(image.pixels.format(), test.format);
    expectPixel(image.pixels, 0, 0, test.rgba, 0.003);
    EXPECT_EQ(image.straightAlpha, std::string(test.name) == "straight.tif");
  }
  WriteOptions apart;
  apart.straightAlpha = true;
  writeImageFile(file("out.tif"), readImageFile(file("straight.tif")).pixels, 1, apart);
  EXPECT_EQ(stored<std::uint8_t>("out.tif"), stored<std::uint8_t>("straight.tif"));
}

TEST_F(ImageFiles, AnOpenExrPictureIsItsDisplayWindow) {
  OIIO::ImageSpec spec(4, 1, 4, OIIO::TypeDesc::FLOAT);
  spec.x = -1, spec.y = 2;  // pixels at x -1..2 and y 2; the window is x 0..4 and y 1..2
  spec.full_x = 0, spec.full_y = 1, spec.full_width = 5, spec.full_height = 2;
  std::vector<float> samples;
  for (float x : {-1.f, 0.f, 1.f, 2.f})
    samples.insert(samples.end(), {x, x, x, 1});
  writeRow("window.exr", spec, samples);
  const World pixels = readImageFile(file("window.exr")).pixels;
  ASSERT_EQ(pixels.width(), 5);
  ASSERT_EQ(pixels.height(), 2);
  expectPixel(pixels, 2, 1, {2, 2, 2, 1}, 0);
  expectPixel(pixels, 3, 1, {0, 0, 0, 0}, 0);
  expectPixel(pixels, 0, 0, {0, 0, 0, 0}, 0);
}

TEST_F(ImageFiles, FailuresNameFileAndReasonAndLeaveNothing) {
  writeText("text.png", "not a picture");
  writeText("kept.png", "still here");
  writeImageFile(file("whole.png"), World(64, 64, PF_PixelFormat_ARGB32), 1, {});
  writeText("cut.png", readText("whole.png").substr(0, 60));
  std::filesystem::create_directory(file("folder.png"));
  for (const char* name : {"missing.png", "folder.png", "text.png", "cut.png"}) {
    try {
      readImageFile(file(name));
      ADD_FAILURE() << name;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.status, ExitStatus::Image);
      EXPECT_NE(std::string(failure.what()).find(name), std::string::npos) << failure.what();
    }
  }
  const World pixels(2, 2, PF_PixelFormat_ARGB32);
  const std::optional<SampleType> half = SampleType::Half;
  EXPECT_THROW(writeImageFile(file("kept.png"), pixels, 1, {.sampleType = half}), Failure);
  EXPECT_THROW(writeImageFile(file("kept.jpeg"), pixels, 1, {}), Failure);
  EXPECT_THROW(writeImageFile(file("none/kept.png"), pixels, 1, {}), Failure);
  EXPECT_THROW(writeImageFile(file("folder.png"), pixels, 1, {}), Failure);
  EXPECT_THROW(writeImageFile(file("kept.png"), World(0, 3, PF_PixelFormat_ARGB32), 1, {}),
               Failure);
  EXPECT_EQ(readText("kept.png"), "still here");
  EXPECT_EQ(filesLike("kept"), "kept.png ");
}

}  // namespace
}  // namespace vellumtide::cli
