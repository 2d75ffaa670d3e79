// The graph reader and the rewriting of node functions on any bytes.
#include <tinyxml.h>

#include <algorithm>
#include <string>

#include "fuzz/fuzz_input.h"
#include "graph/graph_reader.h"
#include "graph/graph_text_map.h"
#include "graph/xml_extent.h"

namespace {

using namespace vellumtide;

/// The extent of a tree as built.
XmlExtent extentOf(const TiXmlDocument& document) {
  XmlExtent extent;
  std::size_t depth = 0;
  const TiXmlNode* node = &document;
  while (node) {
    if (const TiXmlElement* element = node->ToElement()) {
      std::size_t attributes = 0;
      for (auto* a = element->FirstAttribute(); a; a = a->Next())
        ++attributes;
      extent.attributes = std::max(extent.attributes, attributes);
      extent.items += attributes;
      extent.depth = std::max(extent.depth, depth);
    }
    if (!node->ToDocument()) ++extent.items;
    if (node->FirstChild()) {
      ++depth;
      node = node->FirstChild();
      continue;
    }
    while (node && !node->NextSibling()) {
      node = node->Parent();
      --depth;
    }
    if (node) node = node->NextSibling();
  }
  return extent;
}

/// Characters that are said to be copied are.
void checkMap(const SourceMap& map, std::string_view value, std::string_view text) {
  for (std::size_t i = 0; i < value.size(); ++i) {
    const auto origin = map.originOf(i);
    if (!origin) return;
    FUZZ_EXPECT(origin->source < text.size());
    FUZZ_EXPECT(!origin->isCopy || text[origin->source] == value[i]);
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);
  text.resize(text.find('\0') == std::string::npos ? size : text.find('\0'));

  // What is measured before a tree is built must not be less than what is built then.
  const XmlExtent measured = measureXml(text);
  TiXmlDocument document;
  document.SetTabSize(0);
  document.Parse((text + std::string(4, '\0')).c_str(), nullptr, TIXML_ENCODING_UTF8);
  const XmlExtent built = extentOf(document);
  FUZZ_EXPECT(built.depth <= measured.depth);
  FUZZ_EXPECT(built.attributes <= measured.attributes);
  FUZZ_EXPECT(built.items <= measured.items);

  pbGraphInfo graph;
  const int result = readGraphText(text.c_str(), graph);
  FUZZ_EXPECT(result == 0 || result == 1);
  FUZZ_EXPECT(graph.kernels.size() == graph.kernelSources.size());
  for (const pbgNodeInfo& node : graph.nodes) {
    FUZZ_EXPECT(node.evaluateParameters.size() <= 7 * node.evaluateParametersSource.size());
  }

  FUZZ_EXPECT(graph.beyond == Limit::None || (result == 1 && graph.nodes.empty()));
  const GraphTextMaps maps = mapGraphTexts(text.c_str());
  if (graph.beyond == Limit::None) {
    FUZZ_EXPECT(maps.kernelSources.size() == graph.kernelSources.size());
    FUZZ_EXPECT(maps.functionSources.size() == graph.nodes.size());
  }
  for (std::size_t i = 0; i < graph.kernelSources.size(); ++i)
    checkMap(maps.kernelSources[i], graph.kernelSources[i], text);
  for (std::size_t i = 0; i < graph.nodes.size(); ++i)
    checkMap(maps.functionSources[i], graph.nodes[i].evaluateParametersSource, text);

  // The bytes once more as a node's function, with parameters that occur in it.
  pbGraphInfo own;
  own.parameters.emplace_back(pbElementType::Float, "a");
  own.parameters.emplace_back(pbElementType::Float, "_b");
  pbgNodeInfo node;
  node.id = "n";
  node.evaluateParametersSource = text;
  SourceMap map;
  node.parse(GraphParameterNames(own), &map);
  FUZZ_EXPECT(node.evaluateParameters.empty() || map.originOf(node.evaluateParameters.size() - 1));
  checkMap(map, node.evaluateParameters, text);
  FUZZ_EXPECT(node.evaluateParameters.size() <= 7 * text.size());
  return 0;
}
