// The graph reader and the rewriting of node functions on any bytes.
#include <tinyxml.h>

#include <algorithm>
#include <string>

#include "fuzz/fuzz_input.h"
#include "graph/graph_reader.h"
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

  // The bytes once more as a node's function, with parameters that occur in it.
  pbGraphInfo own;
  own.parameters.emplace_back(pbElementType::Float, "a");
  own.parameters.emplace_back(pbElementType::Float, "_b");
  pbgNodeInfo node;
  node.id = "n";
  node.evaluateParametersSource = text;
  node.parse(own);
  FUZZ_EXPECT(node.evaluateParameters.size() <= 7 * text.size());
  return 0;
}
