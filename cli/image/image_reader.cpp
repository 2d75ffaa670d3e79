#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <memory>
#include <string_view>

#include "cli/image/image_format.h"
#include "cli/image/image_library.h"
#include "cli/image/sample_math.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

std::string firstLine(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

// Where in the file's channels red, green, blue and alpha are; -1 for one that it lacks.
class ChannelPlaces {
 public:
  explicit ChannelPlaces(const OIIO::ImageSpec& spec) {
    std::vector<int> colours;
    for (int c = 0; c < spec.nchannels; ++c) {
      if (c != spec.alpha_channel) colours.push_back(c);
    }
    const std::array<int, 3> named = {spec.channelindex("R"), spec.channelindex("G"),
                                      spec.channelindex("B")};
    if (*std::max_element(named.begin(), named.end()) >= 0) {
      std::copy(named.begin(), named.end(), index_.begin());
    } else if (colours.size() >= 3) {
      std::copy_n(colours.begin(), 3, index_.begin());
    } else if (!colours.empty()) {
      index_[0] = index_[1] = index_[2] = colours[0];  // grey
    }
    index_[3] = spec.alpha_channel;
    for (int i : index_)
      first_ = i >= 0 ? std::min(first_, i) : first_;
  }

  int first() const { return first_; }
  int end() const { return 1 + *std::max_element(index_.begin(), index_.end()); }
  int stride() const { return end() - first(); }

  // `source` points at channel first() of a pixel.
  template <typename T>
  void widen(const T* source, T white, T* pixel) const {
    for (int c = 0; c < 4; ++c) {
      pixel[c] = index_[c] >= 0 ? source[index_[c] - first_] : (c == 3 ? white : T{0});
    }
  }

 private:
  std::array<int, 4> index_{-1, -1, -1, -1};
  int first_ = INT_MAX;
};

// A rectangle in the file's coordinates.
struct Rectangle {
  int x, y, width, height;
};

// Copies the pixels that lie in the frame. T holds the file's samples over their whole range.
template <typename T>
void placeInFrame(const std::vector<T>& raw, const ChannelPlaces& places, const Rectangle& data,
                  const Rectangle& frame, bool associated, headless::World& world) {
  const int left = std::max(data.x, frame.x);
  const int right = std::min(data.x + data.width, frame.x + frame.width);
  const int top = std::max(data.y, frame.y);
  const int bottom = std::min(data.y + data.height, frame.y + frame.height);
  std::array<T, 4> rgba;
  for (int y = top; y < bottom && left < right; ++y) {
    const std::size_t first = std::size_t(y - data.y) * data.width + std::size_t(left - data.x);
    const T* source = raw.data() + first * places.stride();
    T* argb = rowOf<T>(world, y - frame.y).data() + 4 * std::size_t(left - frame.x);
    for (int x = left; x < right; ++x, source += places.stride(), argb += 4) {
      places.widen(source, kFileWhite<T>, rgba.data());
      if (associated) takeAlphaApart<T>(rgba, kFileWhite<T>);
      for (int c = 0; c < 4; ++c) {
        const T sample = rgba[(c + 3) % 4];
        argb[c] = kHostWhite<T> == kFileWhite<T>
                      ? sample
                      : rescaled<T>(sample, kFileWhite<T>, kHostWhite<T>);
      }
    }
  }
}

Rectangle frameOf(const OIIO::ImageInput& input) {
  const OIIO::ImageSpec& spec = input.spec();
  if (std::string_view(input.format_name()) == "openexr") {
    return {spec.full_x, spec.full_y, spec.full_width, spec.full_height};
  }
  return {spec.x, spec.y, spec.width, spec.height};
}

SampleType sampleTypeOf(const OIIO::TypeDesc& format) {
  switch (format.basetype) {
    case OIIO::TypeDesc::UINT8:
    case OIIO::TypeDesc::INT8:
      return SampleType::UInt8;
    case OIIO::TypeDesc::UINT16:
    case OIIO::TypeDesc::INT16:
      return SampleType::UInt16;
    case OIIO::TypeDesc::HALF:
      return SampleType::Half;
    default:
      return SampleType::Float;
  }
}

PF_PixelFormat formatOf(SampleType type) {
  if (type == SampleType::UInt8) return PF_PixelFormat_ARGB32;
  return type == SampleType::UInt16 ? PF_PixelFormat_ARGB64 : PF_PixelFormat_ARGB128;
}

template <typename T>
void readPixels(OIIO::ImageInput& input, const fs::path& path, const Rectangle& frame,
                bool associated, headless::World& world) {
  const OIIO::ImageSpec spec = input.spec();
  const ChannelPlaces places(spec);
  std::vector<T> raw(std::size_t(places.stride()) * spec.width * spec.height);
  if (!input.read_image(0, 0, places.first(), places.end(), OIIO::BaseTypeFromC<T>::value,
                        raw.data())) {
    failImage(path, "cannot be read: " + firstLine(input.geterror()));
  }
  placeInFrame(raw, places, {spec.x, spec.y, spec.width, spec.height}, frame, associated, world);
}

std::unique_ptr<OIIO::ImageInput> openImage(const fs::path& path) {
  OIIO::ImageSpec hints;
  hints.attribute("oiio:UnassociatedAlpha", 1);
  std::unique_ptr<OIIO::ImageInput> input = OIIO::ImageInput::open(path.string(), &hints);
  if (!input) failImage(path, "cannot be read as an image: " + firstLine(OIIO::geterror()));

  const OIIO::ImageSpec& spec = input->spec();
  const Rectangle frame = frameOf(*input);
  if (spec.deep || spec.depth > 1) failImage(path, "deep images and volumes cannot be rendered");
  checkSize(path, spec.width, spec.height, spec.nchannels);
  checkSize(path, frame.width, frame.height, 4);
  return input;
}

}  // namespace

ImageShape readShapeWithLibrary(const fs::path& path) {
  const std::unique_ptr<OIIO::ImageInput> input = openImage(path);
  const Rectangle frame = frameOf(*input);
  const SampleType type = sampleTypeOf(input->spec().format);
  return {frame.width, frame.height, formatOf(type), type};
}

ImageFile readWithLibrary(const fs::path& path, ReadAs readAs) {
  const std::unique_ptr<OIIO::ImageInput> input = openImage(path);
  const OIIO::ImageSpec& spec = input->spec();
  const Rectangle frame = frameOf(*input);
  ImageFile file;
  file.sampleType = sampleTypeOf(spec.format);
  const bool straight = spec.get_int_attribute("oiio:UnassociatedAlpha") != 0;
  file.straightAlpha = straight && std::string_view(input->format_name()) == "tiff";
  file.pixels = headless::World(
      frame.width, frame.height,
      readAs == ReadAs::Floats ? PF_PixelFormat_ARGB128 : formatOf(file.sampleType));
  const float aspect = spec.get_float_attribute("PixelAspectRatio", 1.0f);
  if (std::isfinite(aspect) && aspect > 0) file.pixelAspect = aspect;

  const bool associated = !straight && spec.alpha_channel >= 0;
  withSampleType(file.pixels.format(), [&](auto sample) {
    readPixels<decltype(sample)>(*input, path, frame, associated, file.pixels);
  });
  return file;
}

}  // namespace vellumtide::cli
