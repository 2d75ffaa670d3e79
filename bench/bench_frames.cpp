// Time of a frame through the entry point against the smallest GL program with the same shader
// texts, taken in turn in one process. The counter "ratio" is the median of the ratios frame by
// frame; "fresh_ratio" compares with a program that, as the module does, gives the storage of its
// textures back after every frame; "cpu" ratios take the processor time of all threads, which a
// busy machine disturbs less.
#include <benchmark/benchmark.h>

#include <array>
#include <ctime>
#include <stdexcept>

#include "bench/bare_gl.h"
#include "bench/module_frame.h"
#include "glsl/shader_text.h"
#include "graph/graph_reader.h"
#include "graph/node_shaders.h"
#include "kernel/pbk_parser.h"
#include "tests/support/graph_text.h"

namespace vellumtide::bench {
namespace {

using headless::Effect;
using headless::World;

constexpr int kHostOrder = 18;
constexpr float kGain = 0.75f;
constexpr PF_PixelFormat kFormats[] = {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64,
                                       PF_PixelFormat_ARGB128};

const char* const kGainKernel =
    "<languageVersion : 1.0;>\n"
    "kernel Gain < namespace : \"bench\"; vendor : \"bench\"; version : 1; >\n{\n"
    "  input image4 src;\n  output pixel4 dst;\n"
    "  parameter float amount < defaultValue: 0.75; >;\n"
    "  void evaluatePixel() {\n"
    "    pixel4 c = sampleNearest(src, outCoord());\n"
    "    dst = pixel4(c.rgb * amount, c.a);\n  }\n}\n";

const char* const kMixKernel =
    "<languageVersion : 1.0;>\n"
    "kernel Mix < namespace : \"bench\"; vendor : \"bench\"; version : 1; >\n{\n"
    "  input image4 a;\n  input image4 b;\n  output pixel4 dst;\n"
    "  parameter float amount;\n"
    "  void evaluatePixel() {\n"
    "    dst = mix(sampleNearest(a, outCoord()), sampleNearest(b, outCoord()), amount);\n  }\n}\n";

std::vector<Pass> kernelPasses() {
  pbKernelInfo kernel;
  PBKParser(kGainKernel).parse(kernel);
  Pass pass;
  generateKernelShaders(kernel, kHostOrder, pass.texts.vertex, pass.texts.fragment);
  pass.samplers = {{"src", 0}};
  pass.parameters = {{"amount", kGain}};
  return {pass};
}

// A diamond: one node feeds two, and a fourth mixes them.
std::string diamondText() {
  return end_to_end::GraphText("diamond")
      .parameter("level", "float", "0.75")
      .kernel(kGainKernel)
      .kernel(kMixKernel)
      .node("first", "Gain", "first::amount = level;")
      .node("left", "Gain", "left::amount = level * 0.5;")
      .node("right", "Gain", "right::amount = level * 1.5;")
      .node("last", "Mix", "last::amount = level;")
      .wire(
          "src=image src>first.src first>left.src first>right.src left>last.a right>last.b "
          "last>out")
      .str();
}

std::vector<Pass> diamondPasses() {
  pbGraphInfo graph;
  if (readGraphText(diamondText().c_str(), graph) != 0) throw std::runtime_error("bad graph");
  std::vector<Pass> passes(graph.nodes.size());
  for (std::size_t i = 0; i < passes.size(); ++i) {
    generateNodeShaders(graph, i, passes[i].texts.vertex, passes[i].texts.fragment, kHostOrder);
    passes[i].parameters = {{"vlmg_level", kGain}};
  }
  passes[0].samplers = {{"src", 0}};
  passes[1].samplers = passes[2].samplers = {{"src", 1}};
  passes[3].samplers = {{"a", 2}, {"b", 3}};
  return passes;
}

// The arguments: width, height and an index into kFormats.
void measureFrames(benchmark::State& state, const std::string& fileName, const std::string& text,
                   const std::vector<Pass>& passes) {
  const auto width = static_cast<int>(state.range(0)), height = static_cast<int>(state.range(1));
  const PF_PixelFormat format = kFormats[state.range(2)];
  const World picture = benchPicture(width, height, format);
  World moduleOutput(width, height, format), bareOutput(width, height, format);

  BareContext context;
  BareFrame bare(width, height, format, passes);
  BareFrame freshBare(width, height, format, passes, Storage::GivenBack);
  ModuleSession session;
  Effect& effect = session.load(fileName, text, picture);
  session.frame(effect, moduleOutput);
  bare.draw(picture, bareOutput);
  if (moduleOutput.checksum() != bareOutput.checksum()) {
    state.SkipWithError("the two programs draw different pictures");
  }

  // The three programs take turns in going first.
  std::array<std::vector<double>, 3> wall, cpu;
  std::size_t turn = 0;
  for (auto _ : state) {
    ++turn;
    for (std::size_t i = 0; i < wall.size(); ++i) {
      const std::size_t program = (turn + i) % wall.size();
      const std::clock_t before = std::clock();
      wall[program].push_back(program == 0   ? session.frame(effect, moduleOutput)
                              : program == 1 ? bare.draw(picture, bareOutput)
                                             : freshBare.draw(picture, bareOutput));
      cpu[program].push_back(static_cast<double>(std::clock() - before));
    }
    state.SetIterationTime(wall[0].back());
  }
  if (turn == 0) return;
  state.counters["ratio"] = medianRatio(wall[0], wall[1]);
  state.counters["cpu_ratio"] = medianRatio(cpu[0], cpu[1]);
  state.counters["fresh_ratio"] = medianRatio(wall[0], wall[2]);
  state.counters["fresh_cpu_ratio"] = medianRatio(cpu[0], cpu[2]);
  state.counters["module_ms"] = median(wall[0]) * 1e3;
  state.counters["bare_ms"] = median(wall[1]) * 1e3;
  state.counters["depth"] = headless::depthOfPixelFormat(format);
}

void kernelFrame(benchmark::State& state) {
  measureFrames(state, "gain.pbk", kGainKernel, kernelPasses());
}
BENCHMARK(kernelFrame)
    ->ArgsProduct({{1920}, {1080}, {0, 1, 2}})
    ->ArgsProduct({{3840}, {2160}, {0, 1, 2}})
    ->UseManualTime()
    ->MinTime(3)
    ->Unit(benchmark::kMillisecond);

void graphFrame(benchmark::State& state) {
  measureFrames(state, "diamond.pbg", diamondText(), diamondPasses());
}
BENCHMARK(graphFrame)
    ->ArgsProduct({{1920}, {1080}, {0, 1, 2}})
    ->UseManualTime()
    ->MinTime(3)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vellumtide::bench
