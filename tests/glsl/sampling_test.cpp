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
      {"float2 p = outCoord(); (p) += 0.5; dst = sample(src, p);", Sampling::Anywhere},
      {"float2 p = outCoord(); ((p)).x = 0.5; dst = sample(src, p);", Sampling::Anywhere},
      {"float2 p = outCoord(); ++(p); dst = sample(src, p);", Sampling::Anywhere},
      {"float2 p = outCoord(); p.xy.x += 0.5; dst = sample(src, p);", Sampling::Anywhere},
      {"float2 p = outCoord(); p.xy.x++; dst = sample(src, p);", Sampling::Anywhere},
      {"float2 p = outCoord(); x = modf(x, p); dst = sample(src, p);", Sampling::Anywhere},
      {"float2 p = outCoord(); x = modf(x, (p).xy); dst = sample(src, p);", Sampling::Anywhere},
      {"for (float2 q, p; ;) dst = sample(src, p); float2 p = outCoord();", Sampling::Anywhere},
      {"float2 vlmk_compSize = outCoord(); dst = sample(src, vlmk_compSize);", Sampling::Anywhere},
      {"parameter float2 p;void f(){float2 p = outCoord();} void g(){dst = sample(src, p);}",
       Sampling::Anywhere},
      // Reads that only look like the known ones, or do not.
      {"input image4 src;dst = tex2D(src, p);", Sampling::Anywhere},
      {"input image4 src;float2 p = outCoord(); dst = tex2D(src, p);", Sampling::Anywhere},
      {"input image4 src;float4 sample(image4 i, float2 p){return dod(i);}", Sampling::Anywhere},
      {"float2 outCoord(){return q;} dst = sample(src, outCoord());", Sampling::Anywhere},
      {"\n#if 0\ndon't\n#define sample lost\n#endif\ndst = sample(src, outCoord());",
       Sampling::Anywhere},
      // Plain programs are not given up.
      {"input image4 src;float4 g(image4 i, float2 q){return sampleNearest(i, q);}"
       "dst = g(src, outCoord() * 2.0) * pixelSize(src).x * c.a;",
       Sampling::CentresAtFullResolution},
      {"float2 p = outCoord(); float2 q = (p - 3.0) / 2.0; if (p.x > 2.0) q = -p; "
       "dst = sample(src, p) * length(p.yx);",
       Sampling::Centres},
      {"\n#define PI 3.14\ndst = sample(src, outCoord()) * PI;", Sampling::Centres},
      // Macros may mean anything.
      {"\n#define MOVE(q) q += 0.5\nfloat2 p = outCoord(); MOVE(p); dst = sample(src, p);",
       Sampling::Anywhere},
      {"\n#define PI 3.14\nfloat2 p = outCoord(); dst = sample(src, p);", Sampling::Anywhere},
      {"input image4 src;\n#define g(i) tex2D(i, p)\nfloat4 g(image4 i); dst = g(src);",
       Sampling::Anywhere},
      {"\n#define IMAGE image4\ninput IMAGE src; dst = tex2D(src, p);", Sampling::Anywhere},
      {"\n#define outCoord() (q)\ndst = sample(src, outCoord());", Sampling::Anywhere},
      {"\n#define read sample\ndst = read(src, c);", Sampling::Anywhere},
      {"\n#define p (q)\nfloat2 p = outCoord(); dst = sample(src, p);", Sampling::Anywhere},
  };
  for (const auto& testCase : kCases) {
    EXPECT_EQ(samplingOf(testCase.body), testCase.expected) << testCase.body;
  }
  EXPECT_EQ(samplingOf(std::string(2 << 20, ' ')), Sampling::Anywhere);
  EXPECT_EQ(samplingOf("", "void evaluateParameters(){x = sample(a, b).x;}"), Sampling::Anywhere);
}

}  // namespace
}  // namespace vellumtide
