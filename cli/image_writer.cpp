#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <cctype>
#include <memory>

#include "cli/failure.h"
#include "cli/image_file.h"
#include "cli/pending_file.h"
#include "cli/sample_math.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& path, const std::string& reason) {
  throw Failure(ExitStatus::Image, path.string() + ": " + reason);
}

enum class StraightAlpha { Never, OnRequest, Always };

// What a format can hold, and the sample type it gets for each depth.
struct Format {
  const char* name;
  std::vector<const char*> extensions;
  std::vector<SampleType> types;
  SampleType for8, for16, for32;
  StraightAlpha straightAlpha;
};

const Format kFormats[] = {
    {"PNG",
     {".png"},
     {SampleType::UInt8, SampleType::UInt16},
     SampleType::UInt8,
     SampleType::UInt16,
     SampleType::UInt16,
     StraightAlpha::Always},
    {"TIFF",
     {".tif", ".tiff"},
     {SampleType::UInt8, SampleType::UInt16, SampleType::Float},
     SampleType::UInt8,
     SampleType::UInt16,
     SampleType::Float,
     StraightAlpha::OnRequest},
    {"OpenEXR",
     {".exr"},
     {SampleType::Half, SampleType::Float},
     SampleType::Half,
     SampleType::Float,
     SampleType::Float,
     StraightAlpha::Never},
};

const Format& formatOf(const fs::path& path) {
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  for (const Format& format : kFormats) {
    for (const char* candidate : format.extensions) {
      if (extension == candidate) return format;
    }
  }
  fail(path, "cannot be written: the name has to end in .png, .tif, .tiff or .exr");
}

SampleType chosenType(const fs::path& path, PF_PixelFormat pixels, const WriteOptions& options) {
  const Format& format = formatOf(path);
  if (!options.sampleType) {
    if (pixels == PF_PixelFormat_ARGB64) return format.for16;
    return pixels == PF_PixelFormat_ARGB128 ? format.for32 : format.for8;
  }
  const SampleType type = *options.sampleType;
  if (std::count(format.types.begin(), format.types.end(), type) == 0) {
    std::string known;
    for (SampleType t : format.types)
      known += (known.empty() ? "" : " or ") + std::string(name(t));
    fail(path, std::string(format.name) + " files hold " + known + " samples, not " +
                   std::string(name(type)));
  }
  return type;
}

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
std::string reasonOf(std::string message, const PendingFile& pending, const fs::path& target) {
  message = message.substr(0, message.find('\n'));
  const std::string name = pending.path().string();
  if (const std::size_t at = message.find(name); at != std::string::npos) {
    message.replace(at, name.size(), target.string());
  }
  return "cannot be written: " + (message.empty() ? "the image library gives no reason" : message);
}

}  // namespace

std::string_view name(SampleType type) {
  constexpr std::string_view kNames[] = {"uint8", "uint16", "half", "float"};
  return kNames[static_cast<int>(type)];
}

void checkWritable(const fs::path& path, const WriteOptions& options) {
  chosenType(path, PF_PixelFormat_ARGB32, options);
  std::error_code ignored;
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  if (!fs::is_directory(folder, ignored)) {
    fail(path, "cannot be written: there is no folder " + folder.string());
  }
  if (fs::exists(path, ignored) && !fs::is_regular_file(path, ignored)) {
    fail(path, "cannot be written: it exists and is not a file");
  }
}

void writeImageFile(const fs::path& path, const headless::World& pixels, double pixelAspect,
                    const WriteOptions& options) {
  checkWritable(path, options);
  const Format& format = formatOf(path);
  const SampleType type = chosenType(path, pixels.format(), options);
  const bool straight = format.straightAlpha == StraightAlpha::Always ||
                        (format.straightAlpha == StraightAlpha::OnRequest && options.straightAlpha);

  PendingFile pending(path);
  OIIO::ImageSpec spec(pixels.width(), pixels.height(), options.dropAlpha ? 3 : 4,
                       typeDescOf(type));
  spec.attribute("PixelAspectRatio", static_cast<float>(pixelAspect));
  spec.attribute("Software", "Vellumtide");
  if (straight) spec.attribute("oiio:UnassociatedAlpha", 1);
  const std::unique_ptr<OIIO::ImageOutput> output = OIIO::ImageOutput::create(path.string());
  if (!output || !output->open(pending.path().string(), spec)) {
    fail(path, reasonOf(output ? output->geterror() : OIIO::geterror(), pending, path));
  }
  const bool associate = !straight && !options.dropAlpha;
  const bool written =
      type == SampleType::UInt8    ? writePixels<std::uint8_t>(*output, pixels, associate)
      : type == SampleType::UInt16 ? writePixels<std::uint16_t>(*output, pixels, associate)
                                   : writePixels<float>(*output, pixels, associate);
  if (!written || !output->close()) fail(path, reasonOf(output->geterror(), pending, path));
  try {
    pending.commit();
  } catch (const fs::filesystem_error& error) {
    fail(path, "cannot be written: " + error.code().message());
  }
}

}  // namespace vellumtide::cli
