#include "cli/image/image_format.h"

#include <algorithm>
#include <cctype>
#include <system_error>

#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {

namespace fs = std::filesystem;

std::string_view name(SampleType type) {
  constexpr std::string_view kNames[] = {"uint8", "uint16", "half", "float"};
  return kNames[static_cast<int>(type)];
}

bool isTooLarge(double width, double height, double channels) {
  return std::max(width, height) > kLargestSide ||
         width * height * channels * sizeof(float) > static_cast<double>(kLargestImageBytes);
}

void failImage(const fs::path& path, const std::string& reason) {
  throw Failure(ExitStatus::Image, utf8(path) + ": " + reason);
}

const ImageFormat& formatOf(const fs::path& path) {
  if (path == "-") return writtenFormats().front();  // standard output has no ending
  std::string extension = utf8(path.extension());
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  std::vector<std::string> known;
  for (const ImageFormat& format : writtenFormats()) {
    for (const char* candidate : format.extensions) {
      if (extension == candidate) return format;
      known.emplace_back(candidate);
    }
  }
  std::string list = known.front();
  for (std::size_t i = 1; i < known.size(); ++i) {
    list += (i + 1 == known.size() ? " or " : ", ") + known[i];
  }
  failImage(path, "cannot be written: the name has to end in " + list);
}

SampleType writtenType(const fs::path& path, PF_PixelFormat pixels, const WriteOptions& options) {
  const ImageFormat& format = formatOf(path);
  if (!options.sampleType) {
    if (pixels == PF_PixelFormat_ARGB64) return format.for16;
    if (pixels != PF_PixelFormat_ARGB128) return format.for8;
    const bool half = options.preferHalf && format.for8 == SampleType::Half;
    return half ? SampleType::Half : format.for32;
  }
  const SampleType type = *options.sampleType;
  if (std::count(format.types.begin(), format.types.end(), type) == 0) {
    std::string known;
    for (SampleType t : format.types)
      known += (known.empty() ? "" : " or ") + std::string(name(t));
    failImage(path, std::string(format.name) + " files hold " + known + " samples, not " +
                        std::string(name(type)));
  }
  return type;
}

void checkReadable(const fs::path& path) {
  std::error_code failed;
  const fs::file_status status = fs::status(path, failed);
  if (!fs::exists(status)) failImage(path, failed ? reasonOf(failed) : "there is no such file");
  if (fs::is_directory(status)) failImage(path, "is a folder, not an image");
  // A pipe gives its bytes once, and images are looked at before they are read.
  if (!fs::is_regular_file(status)) {
    failImage(path, "is a pipe or a device; images are read from files alone");
  }
}

void checkSize(const fs::path& path, int width, int height, int channels) {
  const std::string size = std::to_string(width) + " x " + std::to_string(height);
  if (width <= 0 || height <= 0) failImage(path, "the image has no pixels (" + size + ")");
  if (isTooLarge(width, height, channels)) {
    failImage(path, "the image is too large (" + size + "; at most " +
                        std::to_string(kLargestSide) + " pixels a side and " +
                        std::to_string(kLargestImageBytes >> 30) + " GiB in memory)");
  }
}

}  // namespace vellumtide::cli
