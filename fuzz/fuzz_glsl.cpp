// Shader generation from whatever kernel or graph the bytes give.
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "glsl/sampling.h"
#include "glsl/shader_text.h"
#include "graph/graph_reader.h"
#include "graph/node_shaders.h"
#include "kernel/pbk_parser.h"

namespace {

using namespace vellumtide;

/// Both texts hold the kernel's body and share everything between the vertex shader's definition
/// and the main functions.
void checkTexts(std::string_view body, std::string_view vertex, std::string_view fragment) {
  constexpr std::string_view kDefine = "\n#define vlmk_VERTEX_SHADER\n";
  constexpr std::string_view kMain = "\nvoid main(void)\n{\n";
  FUZZ_EXPECT(vertex.starts_with(kDefine));
  FUZZ_EXPECT(vertex.ends_with("\tgl_Position = ftransform();\n}\n"));
  FUZZ_EXPECT(fragment.ends_with(";\n}\n"));
  const std::string_view common = fragment.substr(0, fragment.rfind(kMain));
  FUZZ_EXPECT(vertex.substr(kDefine.size()).starts_with(common));
  FUZZ_EXPECT(common.find(body) != std::string_view::npos);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const ChannelOrder order = size % (kChannelOrderCount + 2);
  std::string vertex;
  std::string fragment;
  pbKernelInfo kernel;
  PBKParser(text).parse(kernel);
  ShaderTextPlaces places;
  generateKernelShaders(kernel, order, vertex, fragment, &places);
  checkTexts(kernel.body, vertex, fragment);
  FUZZ_EXPECT(samplingOf(kernel.body, "texture2D(a, b)") == Sampling::Anywhere);
  FUZZ_EXPECT(vertex.compare(places.vertex.body, kernel.body.size(), kernel.body) == 0);
  FUZZ_EXPECT(fragment.compare(places.fragment.body, kernel.body.size(), kernel.body) == 0);

  pbGraphInfo graph;
  if (readGraphText(text.c_str(), graph) != 0) return 0;
  const KernelsByName kernels(graph);
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    const int plain = generateNodeShaders(graph, i, vertex, fragment, order);
    std::string otherVertex = vertex;
    std::string otherFragment = fragment;
    const int indexed =
        generateNodeShaders(graph, kernels, i, otherVertex, otherFragment, order, &places);
    FUZZ_EXPECT(plain == indexed && vertex == otherVertex && fragment == otherFragment);
    if (plain == 0) {
      checkTexts(kernels.find(graph.nodes[i].name)->body, vertex, fragment);
      const std::string& function = graph.nodes[i].evaluateParameters;
      const std::size_t begin = places.fragment.evaluateParameters;
      FUZZ_EXPECT(fragment.compare(begin, function.size(), function) == 0);
    }
  }
  return 0;
}
