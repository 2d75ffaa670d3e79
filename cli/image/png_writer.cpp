#include <cerrno>
#include <cmath>
#include <fstream>

#include "cli/image/image_format.h"
#include "cli/image/png_image.h"
#include "cli/image/png_stream.h"
#include "cli/image/sample_math.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

// From is the sample type of the buffer, To of the file.
template <typename From, typename To>
void writeRows(const PngWriter& file, const headless::World& world, std::size_t channels) {
  std::vector<To> samples(channels * world.width());
  for (int y = 0; y < world.height(); ++y) {
    const std::span<const From> row = rowOf<From>(world, y);
    To* rgba = samples.data();
    for (std::size_t x = 0; x < row.size(); x += 4, rgba += channels) {
      for (std::size_t c = 0; c < channels; ++c) {
        rgba[c] = rescaled<To>(row[x + (c + 1) % 4], kHostWhite<From>, kFileWhite<To>);
      }
    }
    png_write_row(file.png, reinterpret_cast<png_const_bytep>(samples.data()));
  }
}

// The records of the library hold the aspect as pixels a unit of length.
void writeAspect(const PngWriter& file, double pixelAspect) {
  constexpr double across = 100000;
  if (!(pixelAspect > 0.001 && pixelAspect < 1000) || pixelAspect == 1) return;
  png_set_pHYs(file.png, file.info, static_cast<png_uint_32>(across),
               static_cast<png_uint_32>(std::lround(across * pixelAspect)), PNG_RESOLUTION_UNKNOWN);
}

void writePng(std::ostream& stream, const headless::World& pixels, double pixelAspect,
              SampleType type, const WriteOptions& options) {
  const PngWriter file(stream);
  png_set_compression_level(file.png, options.compression);
  png_set_filter(file.png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
  const bool dropAlpha = options.dropAlpha;
  const bool deep = type == SampleType::UInt16;
  png_set_IHDR(file.png, file.info, static_cast<png_uint_32>(pixels.width()),
               static_cast<png_uint_32>(pixels.height()), deep ? 16 : 8,
               dropAlpha ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  writeAspect(file, pixelAspect);
  png_write_info(file.png, file.info);
  if (deep) png_set_swap(file.png);
  withSampleType(pixels.format(), [&](auto sample) {
    using From = decltype(sample);
    const std::size_t channels = dropAlpha ? 3 : 4;
    if (deep) {
      writeRows<From, std::uint16_t>(file, pixels, channels);
    } else {
      writeRows<From, std::uint8_t>(file, pixels, channels);
    }
  });
  png_write_end(file.png, nullptr);
}

}  // namespace

void encodePngFile(const fs::path& file, const fs::path& target, const headless::World& pixels,
                   double pixelAspect, const WriteOptions& options) {
  const SampleType type = writtenType(target, pixels.format(), options);
  errno = 0;
  std::ofstream stream(file, std::ios::binary);
  try {
    if (!stream) throw PngError(lastReason());
    writePng(stream, pixels, pixelAspect, type, options);
    stream.close();
    if (!stream) throw PngError(lastReason());
  } catch (const PngError& error) {
    failImage(target, std::string("cannot be written: ") + error.what());
  }
}

}  // namespace vellumtide::cli
