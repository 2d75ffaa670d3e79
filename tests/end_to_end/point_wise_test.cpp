// Point-wise kernels against the same formula on the CPU.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/support/pictures.h"
#include "tests/support/session.h"

namespace vellumtide::end_to_end {
namespace {

struct PointWise {
  const char* declarations;
  const char* statements;
  Formula formula;
};

const PointWise kKernels[] = {
    {"parameter float gain <defaultValue: 1.5;>; parameter float offset <defaultValue: -0.25;>;",
     "dst = sampleNearest(src, outCoord()) * gain + offset;",
     [](const Rgba& c, int, int) {
       return Rgba{c[0] * 1.5 - 0.25, c[1] * 1.5 - 0.25, c[2] * 1.5 - 0.25, c[3] * 1.5 - 0.25};
     }},
    {"parameter float3x3 m <defaultValue: float3x3(0.5, 0.25, 0.0, -0.5, 1.0, 0.5, 0.0, 0.75, "
     "2.0);>;",
     "pixel4 c = sampleNearest(src, outCoord()); dst = pixel4(m * c.rgb, 1.0 - c.a);",
     [](const Rgba& c, int, int) {
       return Rgba{0.5 * c[0] - 0.5 * c[1], 0.25 * c[0] + c[1] + 0.75 * c[2], 0.5 * c[1] + 2 * c[2],
                   1 - c[3]};
     }},
    {"parameter float level <defaultValue: 0.5019;>;",
     "pixel4 c = sampleNearest(src, outCoord());"
     "dst = c; dst.rgb = c.g > level ? float3(1.0, 0.5, 0.0) : float3(0.0, 0.5, 1.0);",
     [](const Rgba& c, int, int) {
       return c[1] > 0.5019 ? Rgba{1, 0.5, 0, c[3]} : Rgba{0, 0.5, 1, c[3]};
     }},
    {"parameter float gamma <defaultValue: 2.25;>;",
     "pixel4 c = sampleNearest(src, outCoord());"
     "dst = pixel4(pow(max(c.rgb, float3(0.0)), float3(1.0 / gamma)), c.a);",
     [](const Rgba& c, int, int) {
       const auto curve = [](double v) { return std::pow(std::max(v, 0.0), 1 / 2.25); };
       return Rgba{curve(c[0]), curve(c[1]), curve(c[2]), c[3]};
     }},
    {"",
     "pixel4 c = sampleNearest(src, outCoord()); float2 at = outCoord();"
     "dst = pixel4(c.bgr * 0.5 + float3(at.x, at.y, at.x - at.y) / 512.0, c.a);",
     [](const Rgba& c, int x, int y) {
       const double u = (x + 0.5) / 512, v = (y + 0.5) / 512;
       return Rgba{c[2] / 2 + u, c[1] / 2 + v, c[0] / 2 + u - v, c[3]};
     }},
};

TEST(PointWise, AgreesWithTheCpu) {
  Session session;
  for (const PointWise& kernel : kKernels) {
    const std::string text = kernelText(kernel.declarations, kernel.statements);
    for (const PF_PixelFormat format : kFormats) {
      const World picture = randomWorld(101, 53, format);
      const World frame = session.render(session.kernel(picture, text), {.format = format});
      EXPECT_EQ(differences(picture, frame, kernel.formula), "") << kernel.statements;
    }
  }
}

}  // namespace
}  // namespace vellumtide::end_to_end
