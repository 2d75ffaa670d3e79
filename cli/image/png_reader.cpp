#include <cerrno>
#include <fstream>

#include "cli/image/image_format.h"
#include "cli/image/png_image.h"
#include "cli/image/png_stream.h"
#include "cli/image/sample_math.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

// Whatever the file holds, rows come as alpha, red, green, blue of 8 or 16 bits.
void wantArgb(const PngReader& file) {
  const bool hasAlpha = (png_get_color_type(file.png, file.info) & PNG_COLOR_MASK_ALPHA) ||
                        png_get_valid(file.png, file.info, PNG_INFO_tRNS);
  png_set_expand(file.png);
  png_set_gray_to_rgb(file.png);
  if (hasAlpha) {
    png_set_swap_alpha(file.png);
  } else {
    png_set_add_alpha(file.png, 0xFFFF, PNG_FILLER_BEFORE);
  }
  if (png_get_bit_depth(file.png, file.info) == 16) png_set_swap(file.png);
}

void toHostRange(std::span<std::uint16_t> row) {
  using Sample = std::uint16_t;
  for (Sample& sample : row) {
    sample = rescaled<Sample>(sample, kFileWhite<Sample>, kHostWhite<Sample>);
  }
}

ImageShape readShape(const fs::path& path, const PngReader& file) {
  // The limits of this program are tighter than the library's, and are said in its words.
  png_set_user_limits(file.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
  png_read_info(file.png, file.info);
  const int width = static_cast<int>(png_get_image_width(file.png, file.info));
  const int height = static_cast<int>(png_get_image_height(file.png, file.info));
  checkSize(path, width, height, 4);
  const bool deep = png_get_bit_depth(file.png, file.info) == 16;
  if (deep) return {width, height, PF_PixelFormat_ARGB64, SampleType::UInt16};
  return {width, height, PF_PixelFormat_ARGB32, SampleType::UInt8};
}

// 16-bit samples that still use their whole range, as floats.
headless::World floatsOf(const headless::World& raw) {
  headless::World floats(raw.width(), raw.height(), PF_PixelFormat_ARGB128);
  for (int y = 0; y < raw.height(); ++y) {
    const std::span<const std::uint16_t> from = rowOf<std::uint16_t>(raw, y);
    const std::span<float> to = rowOf<float>(floats, y);
    for (std::size_t i = 0; i < from.size(); ++i)
      to[i] = rescaled<float>(from[i], kFileWhite<std::uint16_t>, 1);
  }
  return floats;
}

ImageFile readPng(const fs::path& path, std::istream& stream, ReadAs readAs) {
  PngReader file(stream);
  const auto [width, height, format, sampleType] = readShape(path, file);
  const bool deep = format == PF_PixelFormat_ARGB64;
  ImageFile image;
  image.sampleType = sampleType;
  image.pixels = headless::World(width, height, format);
  const float aspect = png_get_pixel_aspect_ratio(file.png, file.info);
  if (aspect > 0) image.pixelAspect = aspect;

  wantArgb(file);
  const int passes = png_set_interlace_handling(file.png);
  png_read_update_info(file.png, file.info);
  for (int pass = 0; pass < passes; ++pass) {
    for (int y = 0; y < height; ++y) {
      png_read_row(file.png, reinterpret_cast<png_bytep>(image.pixels.row(y)), nullptr);
    }
  }
  png_read_end(file.png, nullptr);
  if (readAs == ReadAs::Floats) {
    image.pixels = deep ? floatsOf(image.pixels)
                        : headless::convertWorld(image.pixels, PF_PixelFormat_ARGB128);
    return image;
  }
  for (int y = 0; deep && y < height; ++y)
    toHostRange(rowOf<std::uint16_t>(image.pixels, y));
  return image;
}

// Opens the file for `action`(stream) and says what fails.
template <typename Action>
auto withPng(const fs::path& path, Action action) {
  errno = 0;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) {
    failImage(path, "cannot be opened: " + lastReason());
  }
  try {
    return action(stream);
  } catch (const PngError& error) {
    failImage(path, std::string("cannot be read as a PNG image: ") + error.what());
  }
}

}  // namespace

bool isPng(const fs::path& path) {
  png_byte start[8] = {};
  errno = 0;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) failImage(path, "cannot be opened: " + lastReason());
  stream.read(reinterpret_cast<char*>(start), sizeof start);
  return stream && png_sig_cmp(start, 0, sizeof start) == 0;
}

ImageFile readPngFile(const fs::path& path, ReadAs readAs) {
  return withPng(path, [&](std::istream& stream) { return readPng(path, stream, readAs); });
}

ImageShape readPngShape(const fs::path& path) {
  return withPng(path, [&](std::istream& stream) { return readShape(path, PngReader(stream)); });
}

}  // namespace vellumtide::cli
