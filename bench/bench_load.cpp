// Time to load a program against the bare compile and link of the same texts in the same process,
// and how load and frame time grow with the size of a graph. Every load sees a text that the driver
// has not seen before, so that none of its caches answers; MESA_SHADER_CACHE_DISABLE=true in the
// environment also keeps Mesa from writing one.
#include <benchmark/benchmark.h>

#include <chrono>
#include <random>

#include "bench/bare_gl.h"
#include "bench/module_frame.h"
#include "glsl/shader_text.h"
#include "kernel/pbk_parser.h"
#include "tests/support/graph_text.h"

namespace vellumtide::bench {
namespace {

using headless::Effect;
using headless::World;

constexpr int kHostOrder = 18;
constexpr int kGrowthSize = 64;

// A number that no text had before, as a GLSL constant.
std::string newConstant() {
  static const unsigned run = std::random_device{}() % 1000000;
  static unsigned next = 0;
  return "0." + std::to_string(1000000 + run) + std::to_string(10000000 + next++);
}

std::string kernelText(const std::string& name, const std::string& inputs,
                       const std::string& members, const std::string& statements) {
  return "<languageVersion : 1.0;>\nkernel " + name +
         " < namespace : \"bench\"; vendor : \"bench\"; version : 1; >\n{\n" + inputs +
         "  output pixel4 dst;\n" + members + "  void evaluatePixel() {\n" + statements +
         "  }\n}\n";
}

// The smallest useful kernel.
std::string gainText() {
  return kernelText("Gain", "  input image4 src;\n",
                    "  parameter float amount < defaultValue: 0.75; >;\n",
                    "    dst = sampleNearest(src, outCoord()) * amount + " + newConstant() + ";\n");
}

// One of the usual size: points, colours, a dependent, a loop with two dozen samples.
std::string blurText() {
  return kernelText(
      "Blur", "  input image4 src;\n  input image4 map;\n",
      "  parameter float2 center < aeUIControl: \"aePoint\"; defaultValue: float2(8.0, 8.0); >;\n"
      "  parameter float3 tint < parameterType: \"colorRGB\"; >;\n"
      "  parameter float radius < minValue: 0.0; maxValue: 20.0; defaultValue: 3.0; >;\n"
      "  parameter int mode < aeUIControl: \"aePopup\"; aePopupString: \"a|b|c\"; >;\n"
      "  parameter bool keepAlpha < defaultValue: true; >;\n"
      "  dependent float2 step;\n  dependent int count;\n"
      "  void evaluateDependents() { step = center / 64.0; count = mode + 3; }\n",
      "    float2 at = outCoord();\n    float4 sum = float4(0.0);\n"
      "    for (int i = 0; i < 24; ++i) {\n"
      "      float angle = float(i) * 0.2617994;\n"
      "      float2 offset = float2(cos(angle), sin(angle)) * radius + step;\n"
      "      sum += sampleLinear(src, at + offset) * " +
          newConstant() +
          ";\n    }\n"
          "    float4 guide = sampleNearest(map, at);\n"
          "    if (mode == 1) sum = mix(sum, guide, guide.a);\n"
          "    else if (mode == 2) sum.rgb = sum.rgb * tint + guide.rgb;\n"
          "    sum.r = pow(abs(sum.r), float(count) / 3.0);\n"
          "    dst = keepAlpha ? float4(sum.rgb, sampleNearest(src, at).a) : sum;\n");
}

double buildBare(const std::string& text) {
  pbKernelInfo kernel;
  PBKParser(text).parse(kernel);
  ShaderTexts texts;
  generateKernelShaders(kernel, kHostOrder, texts.vertex, texts.fragment);
  const auto start = std::chrono::steady_clock::now();
  const GLuint program = buildProgram(texts);
  const auto end = std::chrono::steady_clock::now();
  glDeleteProgram(program);
  return std::chrono::duration<double>(end - start).count();
}

void loadKernel(benchmark::State& state, std::string (*makeText)()) {
  BareContext context;
  ModuleSession session;
  const World picture = benchPicture(16, 16, PF_PixelFormat_ARGB32);
  std::vector<double> moduleTimes, bareTimes;
  int number = 0;
  for (auto _ : state) {
    double seconds = 0;
    const bool moduleFirst = ++number % 2 == 0;
    if (!moduleFirst) bareTimes.push_back(buildBare(makeText()));
    Effect& effect =
        session.load("load" + std::to_string(number) + ".pbk", makeText(), picture, &seconds);
    if (moduleFirst) bareTimes.push_back(buildBare(makeText()));
    session.host.closeInstance(effect);
    moduleTimes.push_back(seconds);
    state.SetIterationTime(seconds);
  }
  if (moduleTimes.empty()) return;
  state.counters["ratio"] = medianRatio(moduleTimes, bareTimes);
  state.counters["module_ms"] = median(moduleTimes) * 1e3;
  state.counters["bare_ms"] = median(bareTimes) * 1e3;
}
BENCHMARK_CAPTURE(loadKernel, gain, gainText)
    ->UseManualTime()
    ->MinTime(2)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(loadKernel, blur, blurText)
    ->UseManualTime()
    ->MinTime(2)
    ->Unit(benchmark::kMillisecond);

std::string chainText(int nodes) {
  return end_to_end::chain(nodes, kernelText("Step", "  input image4 src;\n", "",
                                             "    dst = sampleNearest(src, outCoord()) + " +
                                                 newConstant() + ";\n"))
      .str();
}

std::string ladderText(int rungs) {
  return end_to_end::ladder(
             rungs,
             kernelText(
                 "Rung", "  input image4 a;\n  input image4 b;\n", "",
                 "    dst = mix(sampleNearest(a, outCoord()), sampleNearest(b, outCoord()), " +
                     newConstant() + ");\n"))
      .str();
}

void loadGraph(benchmark::State& state, std::string (*makeText)(int)) {
  ModuleSession session;
  const World picture = benchPicture(kGrowthSize, kGrowthSize, PF_PixelFormat_ARGB32);
  int number = 0;
  for (auto _ : state) {
    double seconds = 0;
    Effect& effect = session.load("graph" + std::to_string(number++) + ".pbg",
                                  makeText(static_cast<int>(state.range(0))), picture, &seconds);
    session.host.closeInstance(effect);
    state.SetIterationTime(seconds);
  }
  state.SetComplexityN(state.range(0));
}

void drawGraph(benchmark::State& state, std::string (*makeText)(int)) {
  ModuleSession session;
  const World picture = benchPicture(kGrowthSize, kGrowthSize, PF_PixelFormat_ARGB32);
  World output = picture;
  Effect& effect = session.load("graph.pbg", makeText(static_cast<int>(state.range(0))), picture);
  session.frame(effect, output);
  for (auto _ : state)
    state.SetIterationTime(session.frame(effect, output));
  state.SetComplexityN(state.range(0));
}

void chainSizes(benchmark::internal::Benchmark* benchmark) {
  for (const int nodes : {1, 2, 5, 10, 20, 50, 100, 200})
    benchmark->Arg(nodes);
  benchmark->UseManualTime()->Complexity(benchmark::oN)->Unit(benchmark::kMillisecond);
}

void ladderSizes(benchmark::internal::Benchmark* benchmark) {
  for (const int rungs : {1, 2, 5, 10, 20, 50, 100})
    benchmark->Arg(rungs);
  benchmark->UseManualTime()->Complexity(benchmark::oN)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(loadGraph, chain, chainText)->Apply(chainSizes)->Iterations(10);
BENCHMARK_CAPTURE(drawGraph, chain, chainText)->Apply(chainSizes)->MinTime(0.3);
BENCHMARK_CAPTURE(loadGraph, ladder, ladderText)->Apply(ladderSizes)->Iterations(10);
BENCHMARK_CAPTURE(drawGraph, ladder, ladderText)->Apply(ladderSizes)->MinTime(0.3);

}  // namespace
}  // namespace vellumtide::bench
