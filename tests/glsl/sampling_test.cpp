#include "glsl/sampling.h"

#include <gtest/gtest.h>

#include <string>

namespace vellumtide {
namespace {

TEST(Sampling, OnlyPlainReadsAtTexelCentresCount) {
  const struct {
    const char* body;
    Sampling expected;
  } kCases[] = {
      {"dst = sample(src, outCoord());", Sampling::Centres},
      {"dst = sampleLinear( src ,outCoord( ) );", Sampling::Centres},
      {"dst = float4(1.0);", Sampling::Centres},
      {"float2 p = outCoord(); dst = sample(a, p) + sample(b, p) * p.x;", Sampling::Centres},
      {"dst = sampleNearest(src, outCoord() * 0.3);", Sampling::CentresAtFullResolution},
      {"dst = sample(a, outCoord()) + sampleNearest(b, c);", Sampling::CentresAtFullResolution},
      {"dst = sample(src, outCoord() + float2(0.5, 0.0));", Sampling::Anywhere},
      {"dst = sample(src, c);", Sampling::Anywhere},
      {"dst = sampleNearest(a, c) + sample(b, c);", Sampling::Anywhere},
      {"dst = texture2D(src, outCoord());", Sampling::Anywhere},
      // A position that changes, or another variable of its name.
      {"float2 p = outCoord(); p += 0.5; dst = sample(src, p);", Sampling::Anywhere},
      {"float2 p = outCoord(); p.x = 3.0; dst = sample(src, p);", Sampling::Anywhere},
      {"float2 p = outCoord(); p[0] = 3.0; dst = sample(src, p);", Sampling::Anywhere},
      {"float2 p = outCoord(); ++p; dst = sample(src, p);", Sampling::Anywhere},
      {"pixel4 f(float2 p){return sample(src, p);} void g(){float2 p = outCoord();}",
       Sampling::Anywhere},
      {"float2 q, p; float2 p = outCoord(); dst = sample(src, p);", Sampling::Anywhere},
      {"void move(inout float2 v){v += 0.5;} float2 p = outCoord(); move(p); dst = sample(src, p);",
       Sampling::Anywhere},
      {"float2 p = outCoord() * 0.5; dst = sample(src, p);", Sampling::Anywhere},
      // Macros may mean anything.
      {"\n#define outCoord() (q)\ndst = sample(src, outCoord());", Sampling::Anywhere},
      {"\n#define read sample\ndst = read(src, c);", Sampling::Anywhere},
      {"\n#define p (q)\nfloat2 p = outCoord(); dst = sample(src, p);", Sampling::Anywhere},
  };
  for (const auto& testCase : kCases) {
    EXPECT_EQ(samplingOf(testCase.body), testCase.expected) << testCase.body;
  }
  EXPECT_EQ(samplingOf(std::string(2 << 20, ' ')), Sampling::Anywhere);
}

}  // namespace
}  // namespace vellumtide
