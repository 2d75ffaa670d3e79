// The image files of a build that has libpng alone.
#include <gtest/gtest.h>

#include <sstream>

#include "cli/image/image_file.h"
#include "cli/image/png_stream.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"
#include "tests/support/scratch_folder.h"

namespace vellumtide::cli {
namespace {

using headless::World;
using testing::ScratchFolder;

constexpr PF_PixelFormat kFormats[] = {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64,
                                       PF_PixelFormat_ARGB128};

void expectPixel(const World& world, int x, int y, std::vector<double> rgba) {
  const std::vector<double> got = world.pixel(x, y);
  for (std::size_t c = 0; c < 4; ++c)
    EXPECT_NEAR(got[c], rgba[c], 1e-4) << x << "," << y << " " << c;
}

ImageFile reread(const ScratchFolder& scratch, const World& world, WriteOptions options,
                 double aspect = 1) {
  const std::filesystem::path path = pathOf(scratch.path("p.png"));
  writeImageFile(path, world, aspect, options);
  return readImageFile(path);
}

TEST(Png, KeepsWhatItsDepthHolds) {
  const ScratchFolder scratch;
  for (const PF_PixelFormat format : kFormats) {
    World world(3, 2, format);
    world.setPixel(0, 0, 1, 0.2, 0, 0.4);
    world.setPixel(2, 1, 0.6, 0.8, 1, 0);
    const bool eight = format == PF_PixelFormat_ARGB32;
    const ImageFile image = reread(scratch, world, {}, 10.0 / 11);
    EXPECT_EQ(image.pixels.format(), eight ? PF_PixelFormat_ARGB32 : PF_PixelFormat_ARGB64);
    EXPECT_NEAR(image.pixelAspect, 10.0 / 11, 1e-4);
    expectPixel(image.pixels, 0, 0, {1, 0.2, 0, 0.4});
    expectPixel(image.pixels, 2, 1, {0.6, 0.8, 1, 0});
    const ImageFile opaque =
        reread(scratch, world, {.sampleType = SampleType::UInt8, .dropAlpha = true});
    EXPECT_EQ(opaque.sampleType, SampleType::UInt8);
    expectPixel(opaque.pixels, 2, 1, {0.6, 0.8, 1, 1});
  }
  World bright(1, 1, PF_PixelFormat_ARGB128);
  bright.setPixel(0, 0, 7, -1, std::numeric_limits<double>::quiet_NaN(), 0.5);
  expectPixel(reread(scratch, bright, {}).pixels, 0, 0, {1, 0, 0, 0.5});
}

TEST(Png, ReadsEveryKindOfPixel) {
  const struct {
    int type, bits;
    bool interlaced;
    std::vector<unsigned char> row;  // two pixels
    std::vector<double> second;
  } cases[] = {
      {PNG_COLOR_TYPE_GRAY, 1, false, {0x40}, {1, 1, 1, 1}},
      {PNG_COLOR_TYPE_GRAY, 8, true, {0, 51}, {0.2, 0.2, 0.2, 1}},
      {PNG_COLOR_TYPE_GRAY_ALPHA, 8, false, {0, 0, 102, 51}, {0.4, 0.4, 0.4, 0.2}},
      {PNG_COLOR_TYPE_PALETTE, 4, false, {0x01}, {0.2, 0.4, 0.6, 0.8}},
      {PNG_COLOR_TYPE_RGB,
       16,
       false,
       {0, 0, 0, 0, 0, 0, 0x80, 0, 0xFF, 0xFF, 0x40, 0},
       {0.5, 1, 0.25, 1}},
      {PNG_COLOR_TYPE_RGB_ALPHA, 8, true, {0, 0, 0, 0, 51, 102, 153, 204}, {0.2, 0.4, 0.6, 0.8}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "type " << c.type << ", " << c.bits << " bits");
    std::ostringstream bytes;
    {
      const PngWriter file(bytes);
      png_set_IHDR(file.png, file.info, 2, 1, c.bits, c.type,
                   c.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                   PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
      const png_color colours[] = {{0, 0, 0}, {51, 102, 153}};
      const png_byte alphas[] = {255, 204};
      if (c.type == PNG_COLOR_TYPE_PALETTE) {
        png_set_PLTE(file.png, file.info, colours, 2);
        png_set_tRNS(file.png, file.info, alphas, 2, nullptr);
      }
      png_write_info(file.png, file.info);
      for (int pass = png_set_interlace_handling(file.png); pass > 0; --pass) {
        png_write_row(file.png, c.row.data());
      }
      png_write_end(file.png, nullptr);
    }
    const ScratchFolder scratch;
    scratch.put("p.png", bytes.str());
    const ImageFile image = readImageFile(pathOf(scratch.path("p.png")));
    EXPECT_EQ(image.sampleType, c.bits == 16 ? SampleType::UInt16 : SampleType::UInt8);
    expectPixel(image.pixels, 1, 0, c.second);

    // Cut anywhere it is an error, never a crash.
    for (std::size_t length = 0; length + 12 < bytes.str().size(); ++length) {
      scratch.put("cut.png", bytes.str().substr(0, length));
      try {
        readImageFile(pathOf(scratch.path("cut.png")));
        ADD_FAILURE() << "cut to " << length;
      } catch (const Failure& failure) {
        EXPECT_EQ(failure.status, ExitStatus::Image);
      }
    }
  }
}

}  // namespace
}  // namespace vellumtide::cli
