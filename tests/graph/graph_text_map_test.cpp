#include <gtest/gtest.h>

#include "graph/graph_reader.h"
#include "graph/graph_text_map.h"

namespace vellumtide {
namespace {

/// The value with "~" for what is no copy and "?" for what has no origin.
std::string annotated(const SourceMap& map, const std::string& value, const std::string& file) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const auto origin = map.originOf(i);
    if (origin && origin->isCopy) {
      EXPECT_EQ(file.at(origin->source), value[i]) << file;
    }
    text += !origin ? '?' : origin->isCopy ? value[i] : '~';
  }
  return text;
}

TEST(GraphTextMap, TextsAreFoundInTheFile) {
  // What stands before: a mark, tabs, characters of several bytes, line ends of every kind.
  const std::string before =
      "\xEF\xBB\xBF<?xml version='1.0'?>\r\n\t<!-- \xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80 -->\r\r\n"
      "<graph\n\rname='\xC3\xA9'>\t<kernel>kernel first{ x }</kernel>\xEF\xBB\xBF "
      "<kernel><x/></kernel>";
  const struct {
    const char *text, *annotated;
  } kCases[] = {
      {"<![CDATA[ kernel k{\r\n a & b }]]>", " kernel k{\r\n a & b }"},
      {"\r\n \xC3\xA9<![CDATA[no]]>", "\xC3\xA9"},
      {"<![CDATA[]]>", ""},
      {"\n kernel\t k { a &lt; b &amp;&amp; c&#x41;&#8364; d & e &unknown; }",
       "kernel k { a ~ b ~~ c~~~~ d  e unknown; }"},
      {"kernel <![CDATA[k]]>", "kernel"},
  };
  for (const auto& [text, expected] : kCases) {
    const std::string file = before + "<kernel>" + text + "</kernel><node/><node>" +
                             "<evaluateParameters>" + text + "</evaluateParameters></node></graph>";
    pbGraphInfo graph;
    ASSERT_EQ(readGraphText(file.c_str(), graph), 0);
    const GraphTextMaps maps = mapGraphTexts(file.c_str());
    ASSERT_EQ(maps.kernelSources.size(), graph.kernelSources.size()) << text;
    const SourceMap& last = maps.kernelSources.back();
    if (*expected) {
      EXPECT_EQ(annotated(last, graph.kernelSources.back(), file), expected);
    }
    EXPECT_EQ(annotated(maps.functionSources.at(1), graph.nodes[1].evaluateParametersSource, file),
              expected);
  }
}

TEST(GraphTextMap, RewrittenFunctionsKeepTheirPlaces) {
  pbGraphInfo graph;
  graph.parameters.emplace_back(pbElementType::Float, "amount");
  pbgNodeInfo node;
  node.id = "Blur";
  node.evaluateParametersSource = "void f()\n{\n\tBlur::r = amount/**/;\n#x Blur\n} // tail";
  SourceMap map;
  node.parse(GraphParameterNames(graph), &map);
  EXPECT_EQ(annotated(map, node.evaluateParameters, node.evaluateParametersSource),
            "void f()\n{\nr = ~~~~~amount~;\n#x ~\n}");
}

}  // namespace
}  // namespace vellumtide
