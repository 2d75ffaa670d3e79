#include "cli/build_errors/program_shaders.h"

#include <algorithm>
#include <unordered_set>

#include "graph/node_shaders.h"
#include "kernel/pbk_parser.h"

namespace vellumtide::cli {
namespace {

constexpr ChannelOrder kHostOrder = 18;

// Behind the last character that is not blank.
std::size_t contentEnd(const std::string& text) {
  return text.find_last_not_of(" \t\r\n\v\f") + 1;
}

// A place in a text's source as a place in the file; one behind a character is found by that.
std::optional<std::size_t> inFile(const OwnText& text, std::size_t source, bool isBehind) {
  if (!text.file) return source;
  if (isBehind && source == 0) return std::nullopt;
  const auto origin = text.file->originOf(source - isBehind);
  if (!origin) return std::nullopt;
  return origin->source + isBehind;
}

void mapKernel(OwnText& body, const std::string& source) {
  pbKernelInfo kernel;
  PBKParser parser(source);
  parser.parse(kernel, &body.source);
  body.size = kernel.body.size();
  body.isClosed = parser.lexState() != LexState::End;
  body.end = body.isClosed ? inFile(body, parser.position() - 1, false)
                           : inFile(body, contentEnd(source), true);
}

void mapFunction(OwnText& function, const pbGraphInfo& graph, pbgNodeInfo node) {
  node.parse(GraphParameterNames(graph), &function.source);
  function.size = node.evaluateParameters.size();
  ShaderReader reader(node.evaluateParametersSource);
  ShaderReader::Parser all;
  reader.run(all);
  function.isClosed = reader.braceDepth() <= 0;
  function.end = inFile(function, contentEnd(node.evaluateParametersSource), true);
}

}  // namespace

std::optional<std::size_t> OwnText::fileOffset(std::size_t at) const {
  const auto origin = source.originOf(at);
  if (!origin || !file) return origin ? std::optional(origin->source) : std::nullopt;
  const auto place = file->originOf(origin->source);
  return place ? std::optional(place->source) : std::nullopt;
}

std::optional<std::size_t> NodeShaders::fileOffset(ShaderStage stage, std::size_t at) const {
  const OwnTextPlaces& own = places(stage);
  if (at >= own.body && at < own.body + body.size) return body.fileOffset(at - own.body);
  const bool isInFunction =
      at >= own.evaluateParameters && at < own.evaluateParameters + function.size;
  return isInFunction ? function.fileOffset(at - own.evaluateParameters) : std::nullopt;
}

std::optional<std::size_t> NodeShaders::endBefore(ShaderStage stage, std::size_t at) const {
  const std::string& all = text(stage);
  const OwnTextPlaces& own = places(stage);
  const auto follows = [&](const OwnText& mine, std::size_t begin) {
    const std::size_t end = begin + mine.size;
    if (mine.size == 0 || at < end) return false;
    return !mine.isClosed || all.find_first_not_of(" \t\r\n\v\f", end) >= at;
  };
  if (follows(body, own.body)) return body.end;
  return follows(function, own.evaluateParameters) ? function.end : std::nullopt;
}

ProgramShaders::ProgramShaders(const Program& program) : program_(program) {
  if (program.graph()) maps_ = mapGraphTexts(program.text.c_str());
}

std::vector<std::string> ProgramShaders::labels() const {
  if (const pbKernelInfo* kernel = program_.kernel()) return {kernel->name.str()};
  std::vector<std::string> labels;
  for (const pbgNodeInfo& node : program_.graph()->nodes)
    labels.push_back(node.id.str());
  return labels;
}

NodeShaders ProgramShaders::node(std::size_t index) const {
  NodeShaders shaders;
  shaders.label = labels()[index];
  if (const pbGraphInfo* graph = program_.graph()) {
    addGraphNode(shaders, *graph, index);
    return shaders;
  }
  shaders.hasKernel = true;
  generateKernelShaders(*program_.kernel(), kHostOrder, shaders.vertex_, shaders.fragment_,
                        &shaders.places_);
  mapKernel(shaders.body, program_.text);
  return shaders;
}

std::vector<std::string> ProgramShaders::nodesLike(const pbGraphInfo& graph,
                                                   const KernelsByName& kernels,
                                                   std::size_t index) const {
  const pbgNodeInfo& like = graph.nodes[index];
  const pbKernelInfo* kernel = kernels.find(like.name);
  std::vector<std::string> nodes;
  std::unordered_set<std::string> known;
  for (const pbgNodeInfo& node : graph.nodes) {
    const bool isLike = kernels.find(node.name) == kernel &&
                        (!kernel || node.evaluateParameters == like.evaluateParameters);
    if (isLike && known.insert(node.id.str()).second) nodes.push_back(node.id.str());
  }
  return nodes;
}

void ProgramShaders::addGraphNode(NodeShaders& shaders, const pbGraphInfo& graph,
                                  std::size_t index) const {
  const KernelsByName kernels(graph);
  shaders.nodes = nodesLike(graph, kernels, index);
  shaders.hasKernel = generateNodeShaders(graph, kernels, index, shaders.vertex_, shaders.fragment_,
                                          kHostOrder, &shaders.places_) == 0;
  if (!shaders.hasKernel) return;
  const auto kernel =
      static_cast<std::size_t>(kernels.find(graph.nodes[index].name) - graph.kernels.data());
  if (kernel < maps_.kernelSources.size()) {
    shaders.body.file = &maps_.kernelSources[kernel];
    mapKernel(shaders.body, graph.kernelSources[kernel]);
  }
  if (index < maps_.functionSources.size()) {
    shaders.function.file = &maps_.functionSources[index];
    mapFunction(shaders.function, graph, graph.nodes[index]);
  }
}

}  // namespace vellumtide::cli
