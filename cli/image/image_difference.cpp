#include "cli/image/image_difference.h"

#include <array>
#include <cmath>

#include "cli/image/sample_math.h"

namespace vellumtide::cli {
namespace {

using headless::World;

// Differences of one pixel: red, green, blue, alpha.
using PixelDifference = std::array<double, 4>;

// The value of an integer sample without the rounding of a float.
double exact(double value, double white) {
  return white > 0 ? std::round(value * white) / white : value;
}

double sampleDifference(double a, double b, double white) {
  if (a == b || (std::isnan(a) && std::isnan(b))) return 0;
  const double difference = std::abs(a - b);
  if (!std::isfinite(difference)) return INFINITY;
  // Whole steps, so that one step is 1 / white and not a rounding error beyond it.
  return white > 0 ? std::abs(std::round(a * white) - std::round(b * white)) / white : difference;
}

// Calls action(x, y, difference, argbOfA, argbOfB) for each pixel.
template <typename Action>
void forEachPixel(const World& a, const World& b, const DifferenceOptions& options, Action action) {
  for (int y = 0; y < a.height(); ++y) {
    const float* one = rowOf<float>(a, y).data();
    const float* two = rowOf<float>(b, y).data();
    for (int x = 0; x < a.width(); ++x, one += 4, two += 4) {
      PixelDifference difference{};
      const bool hidden = options.ignoreHidden && one[0] == 0 && two[0] == 0;
      for (int c = 0; c < 3 && !hidden; ++c)
        difference[c] = sampleDifference(one[c + 1], two[c + 1], options.white);
      if (!options.ignoreAlpha) difference[3] = sampleDifference(one[0], two[0], options.white);
      action(x, y, difference, one, two);
    }
  }
}

}  // namespace

double ImageDifference::psnr() const {
  return -20 * std::log10(rms);
}

double commonWhite(SampleType a, SampleType b) {
  const auto isInteger = [](SampleType type) {
    return type == SampleType::UInt8 || type == SampleType::UInt16;
  };
  if (!isInteger(a) || !isInteger(b)) return 0;
  return a == SampleType::UInt8 && b == SampleType::UInt8 ? 255 : 65535;
}

ImageDifference compareImages(const World& a, const World& b, const DifferenceOptions& options) {
  ImageDifference result;
  double sum = 0, squares = 0;
  std::uint64_t samples = 0;
  forEachPixel(
      a, b, options,
      [&](int x, int y, const PixelDifference& difference, const float* one, const float* two) {
        double largest = 0;
        bool isFinite = true;
        for (int c = 0; c < (options.ignoreAlpha ? 3 : 4); ++c) {
          const double d = difference[c];
          largest = std::max(largest, d);
          if (d > result.largest) {
            const int place = (c + 1) % 4;
            result.largest = d;
            result.x = x, result.y = y, result.channel = c;
            result.a = exact(one[place], options.white);
            result.b = exact(two[place], options.white);
          }
          const int sample = (c + 1) % 4;
          if (!std::isfinite(one[sample]) || !std::isfinite(two[sample])) {
            isFinite = false;
            continue;
          }
          result.largestFinite = std::max(result.largestFinite, d);
          sum += d;
          squares += d * d;
          ++samples;
        }
        ++result.pixels;
        result.differing += largest > options.tolerance;
        result.notFinite += !isFinite;
        result.unbounded += std::isinf(largest);
      });
  if (samples > 0) {
    result.mean = sum / static_cast<double>(samples);
    result.rms = std::sqrt(squares / static_cast<double>(samples));
  }
  return result;
}

World differencePicture(const World& a, const World& b, const DifferenceOptions& options,
                        double gain, PF_PixelFormat format) {
  World picture(a.width(), a.height(), format);
  forEachPixel(a, b, options,
               [&](int x, int y, const PixelDifference& difference, const float*, const float*) {
                 std::array<double, 3> color{};
                 for (int c = 0; c < 3; ++c) {
                   const double d = std::max(difference[c], difference[3]);
                   color[c] = std::isinf(d) ? 1 : d * gain;
                 }
                 picture.setPixel(x, y, color[0], color[1], color[2], 1);
               });
  return picture;
}

}  // namespace vellumtide::cli
