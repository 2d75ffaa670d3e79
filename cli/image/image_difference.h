// How far two pictures of the same size lie apart, sample by sample.
#pragma once

#include <cstdint>

#include "cli/image/image_file.h"

namespace vellumtide::cli {

struct DifferenceOptions {
  double tolerance = 0;       // a pixel differs when one of its samples differs by more
  bool ignoreAlpha = false;   // compare red, green and blue alone
  bool ignoreHidden = false;  // the colour of a pixel that is transparent in both does not count
  double white = 0;           // integer samples count in whole steps of 1 / white; 0: they do not
};

// All differences are absolute, white is 1. NaN equals NaN and an infinity equals itself; against
// any other value they differ infinitely.
struct ImageDifference {
  std::uint64_t pixels = 0;
  std::uint64_t differing = 0;  // pixels beyond the tolerance
  std::uint64_t notFinite = 0;  // pixels with a sample, in either picture, that is NaN or infinite
  std::uint64_t unbounded =
      0;  // of the differing ones, pixels with a sample that differs infinitely
  // The first of the largest differences; all 0 when no sample differs.
  double largest = 0;
  int x = 0, y = 0;
  int channel = 0;  // 0 red, 1 green, 2 blue, 3 alpha
  double a = 0, b = 0;
  double largestFinite = 0;
  // Over all samples that count and are finite in both.
  double mean = 0, rms = 0;

  double share() const { return static_cast<double>(differing) / static_cast<double>(pixels); }
  double psnr() const;  // decibels below white; infinite where rms is 0
};

// The largest integer sample that both files' samples have a whole place on: 255 or 65535, or 0
// when one of them holds floating point.
double commonWhite(SampleType a, SampleType b);

// Both pictures in 32 bits and of one size.
ImageDifference compareImages(const headless::World& a, const headless::World& b,
                              const DifferenceOptions& options);

// An opaque picture of the differences times `gain`; what alpha differs by is in all three colours,
// and infinite differences are white.
headless::World differencePicture(const headless::World& a, const headless::World& b,
                                  const DifferenceOptions& options, double gain,
                                  PF_PixelFormat format);

}  // namespace vellumtide::cli
