#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <memory>

#include "cli/image/image_format.h"
#include "cli/image/image_library.h"
#include "cli/image/sample_math.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

// From is the sample type of the buffer, To of the file.
template <typename From, typename To>
bool writePixels(OIIO::ImageOutput& output, const headless::World& world, bool associate) {
  std::vector<To> samples(std::size_t(4) * world.width() * world.height());
  To* rgba = samples.data();
  for (int y = 0; y < world.height(); ++y) {
    const std::span<const From> row = rowOf<From>(world, y);
    for (std::size_t x = 0; x < row.size(); x += 4, rgba += 4) {
      for (std::size_t c = 0; c < 4; ++c) {
        rgba[c] = rescaled<To>(row[x + (c + 1) % 4], kHostWhite<From>, kFileWhite<To>);
      }
      if (associate) multiplyAlphaIn(std::span<To, 4>(rgba, 4), kFileWhite<To>);
    }
  }
  return output.write_image(OIIO::BaseTypeFromC<To>::value, samples.data(), 4 * sizeof(To));
}

template <typename To>
bool writePixels(OIIO::ImageOutput& output, const headless::World& world, bool associate) {
  return withSampleType(world.format(), [&](auto sample) {
    return writePixels<decltype(sample), To>(output, world, associate);
  });
}

OIIO::TypeDesc typeDescOf(SampleType type) {
  switch (type) {
    case SampleType::UInt8:
      return OIIO::TypeDesc::UINT8;
    case SampleType::UInt16:
      return OIIO::TypeDesc::UINT16;
    case SampleType::Half:
      return OIIO::TypeDesc::HALF;
    default:
      return OIIO::TypeDesc::FLOAT;
  }
}

// The library's message, about the target instead of the file that was to become it.
std::string reasonOf(std::string message, const fs::path& file, const fs::path& target) {
  message = message.substr(0, message.find('\n'));
  const std::string name = file.string();
  if (const std::size_t at = message.find(name); at != std::string::npos) {
    message.replace(at, name.size(), target.string());
  }
  return "cannot be written: " + (message.empty() ? "the image library gives no reason" : message);
}

}  // namespace

void encodeWithLibrary(const fs::path& file, const fs::path& target, const headless::World& pixels,
                       double pixelAspect, const WriteOptions& options) {
  const ImageFormat& format = formatOf(target);
  const SampleType type = writtenType(target, pixels.format(), options);
  const bool straight = format.straightAlpha == StraightAlpha::Always ||
                        (format.straightAlpha == StraightAlpha::OnRequest && options.straightAlpha);

  OIIO::ImageSpec spec(pixels.width(), pixels.height(), options.dropAlpha ? 3 : 4,
                       typeDescOf(type));
  spec.attribute("PixelAspectRatio", static_cast<float>(pixelAspect));
  spec.attribute("Software", "Vellumtide");
  // The library would write the time of day, and equal pictures would be different files.
  spec.attribute("DateTime", "");
  spec.attribute("tiff:zipquality", std::max(1, options.compression));
  if (straight) spec.attribute("oiio:UnassociatedAlpha", 1);
  const std::unique_ptr<OIIO::ImageOutput> output = OIIO::ImageOutput::create(target.string());
  if (!output || !output->open(file.string(), spec)) {
    failImage(target, reasonOf(output ? output->geterror() : OIIO::geterror(), file, target));
  }
  const bool associate = !straight && !options.dropAlpha;
  const bool written =
      type == SampleType::UInt8    ? writePixels<std::uint8_t>(*output, pixels, associate)
      : type == SampleType::UInt16 ? writePixels<std::uint16_t>(*output, pixels, associate)
                                   : writePixels<float>(*output, pixels, associate);
  if (!written || !output->close()) failImage(target, reasonOf(output->geterror(), file, target));
}

}  // namespace vellumtide::cli
