// How fast kernel source becomes shader text, in bytes of source a second.
#include <benchmark/benchmark.h>

#include <string>

#include "glsl/shader_text.h"
#include "graph/graph_reader.h"
#include "graph/node_shaders.h"
#include "kernel/pbk_parser.h"

namespace vellumtide {
namespace {

constexpr int kHostOrder = 18;

template <typename... Pieces>
void append(std::string& text, const Pieces&... pieces) {
  (text.append(pieces), ...);
}

/// A kernel of about `bytes` bytes: parameters with metadata, dependents, comments, a macro and one
/// long function, in the mix that hand-written kernels have.
std::string makeKernel(std::size_t bytes) {
  std::string text =
      "<languageVersion : 1.0;>\n"
      "kernel Bench < namespace : \"bench\"; vendor : \"bench\"; version : 3; >\n{\n"
      "  input image4 src;\n  output pixel4 dst;\n";
  for (int i = 0; i < 24; ++i) {
    const std::string n = std::to_string(i);
    append(text, "  parameter float2 p", n, " < minValue: float2(-1.5, 0.0); maxValue: float2(1.0,",
           " 2.0); defaultValue: float2(0.25, 0.5); description: \"a point\"; >;\n",
           "  dependent float d", n, ";\n");
  }
  append(text, "  #define MIXED(a, b) ((a) * 0.5 + \\\n    (b) * 0.5)\n",
         "  void evaluateDependents() {\n");
  for (int i = 0; i < 24; ++i) {
    const std::string n = std::to_string(i);
    append(text, "    d", n, " = p", n, ".x * p", n, ".y;\n");
  }
  append(text, "  }\n  void evaluatePixel() {\n    float4 c = sampleNearest(src, outCoord());\n");
  for (int line = 0; text.size() < bytes; ++line) {
    const std::string n = std::to_string(line % 24);
    append(text, "    // blend step ", std::to_string(line), "\n    c.rgb = MIXED(c.rgb * d", n,
           ", sampleLinear(src, outCoord() + p", n, ").rgb); /* keeps alpha */\n");
  }
  append(text, "    dst = c;\n  }\n}\n");
  return text;
}

void parseKernel(benchmark::State& state) {
  const std::string text = makeKernel(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    pbKernelInfo kernel;
    PBKParser(text).parse(kernel);
    benchmark::DoNotOptimize(kernel.body.data());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(parseKernel)->Arg(140'000)->Arg(10'000'000)->Unit(benchmark::kMicrosecond);

void parseKernelAndGenerateShaders(benchmark::State& state) {
  const std::string text = makeKernel(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    pbKernelInfo kernel;
    PBKParser(text).parse(kernel);
    std::string vertexText;
    std::string fragmentText;
    generateKernelShaders(kernel, kHostOrder, vertexText, fragmentText);
    benchmark::DoNotOptimize(vertexText.data());
    benchmark::DoNotOptimize(fragmentText.data());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(parseKernelAndGenerateShaders)
    ->Arg(2'000)
    ->Arg(140'000)
    ->Arg(10'000'000)
    ->Unit(benchmark::kMicrosecond);

/// A graph of that many nodes on one small kernel, all texts generated.
void readGraphAndGenerateShaders(benchmark::State& state) {
  const auto nodeCount = static_cast<std::size_t>(state.range(0));
  std::string text = "<graph name=\"g\"><parameter name=\"amount\" type=\"float\"/>";
  append(text, "<kernel><![CDATA[", makeKernel(2'000), "]]></kernel>");
  for (std::size_t i = 0; i < nodeCount; ++i) {
    const std::string n = std::to_string(i);
    append(text, "<node id=\"n", n, "\" name=\"Bench\"><evaluateParameters><![CDATA[\n",
           "void evaluateParameters()\n{\n\tn", n, "::p0 = float2(amount, amount);\n}\n",
           "]]></evaluateParameters></node>");
  }
  append(text, "</graph>");
  for (auto _ : state) {
    pbGraphInfo graph;
    readGraphText(text.c_str(), graph);
    const KernelsByName kernels(graph);
    for (std::size_t i = 0; i < nodeCount; ++i) {
      std::string vertexText;
      std::string fragmentText;
      generateNodeShaders(graph, kernels, i, vertexText, fragmentText, kHostOrder);
      benchmark::DoNotOptimize(fragmentText.data());
    }
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(readGraphAndGenerateShaders)
    ->RangeMultiplier(10)
    ->Range(1, 10'000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vellumtide
