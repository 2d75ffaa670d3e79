#include <gtest/gtest.h>

#include "graph/graph_reader.h"
#include "graph/xml_extent.h"

namespace vellumtide {
namespace {

std::string repeat(std::string_view piece, std::size_t count) {
  std::string text;
  text.reserve(piece.size() * count);
  while (count-- > 0)
    text += piece;
  return text;
}

Limit beyondOf(const std::string& text) {
  pbGraphInfo graph;
  const int result = readGraphText(text.c_str(), graph);
  EXPECT_EQ(result, graph.beyond == Limit::None ? 0 : 1);
  EXPECT_TRUE(graph.beyond == Limit::None || (graph.nodes.empty() && graph.kernels.empty()));
  return graph.beyond;
}

/// A text around `middle` that is read when nothing in it is refused.
std::string graphWith(std::string middle) {
  return "<graph name='g'>" + std::move(middle);
}

TEST(HostileGraphs, LimitsAreMetExactly) {
  const struct {
    const char* what;
    std::string text;
    int result;
  } cases[] = {
      {"256 elements deep", graphWith(repeat("<a>", 255)), 0},
      {"257 elements deep", graphWith(repeat("<a>", 256)), 1},
      {"257 deep, the last one empty", graphWith(repeat("<a b='>'>", 255) + "<c/>"), 1},
      {"100,000 deep and closed", graphWith(repeat("<a>", 100'000) + repeat("</a>", 100'000)), 1},
      {"wide, not deep", graphWith(repeat("<a><b/></a>", 10'000) + "</graph>"), 0},
      {"tags in comments and texts",
       graphWith("<!--" + repeat("<a>", 999) + "--><![CDATA[" + repeat("<a>", 999) + "]]>"), 0},
      {"tags in quotes", graphWith("<a b='" + repeat("<a>", 999) + "'/></graph>"), 0},
      {"a character reference that hides a quote",
       graphWith("<b c='&#x'>x41;'>" + repeat("<a>", 254)), 0},
      {"and one that hides a closing tag",
       graphWith(repeat("<a>", 200) + "&#x" + repeat("</a>", 200) + "x41;" + repeat("<a>", 100)),
       1},
      {"a character that hides a quote", graphWith("<b c='\xe1'>'>" + repeat("<a>", 254)), 0},
      {"a comment opened in a closing tag", graphWith(repeat("<a></a<!-->", 999)), 0},
  };
  for (const auto& c : cases) {
    pbGraphInfo graph;
    EXPECT_EQ(readGraphText(c.text.c_str(), graph), c.result) << c.what;
  }
  const auto withAttributes = [](int count) {
    std::string text = "<graph";
    for (int i = 0; i < count; ++i)
      text.append(" a").append(std::to_string(i)).append("=1");
    return text + "/>";
  };
  EXPECT_EQ(beyondOf(withAttributes(64)), Limit::None);
  EXPECT_EQ(beyondOf(withAttributes(65)), Limit::TagAttributes);

  const auto kernel = [](std::size_t inputs, const std::string& body = "") {
    return "<kernel>kernel k{input image4 " + repeat("a ", inputs) + ";" + body + "}</kernel>";
  };
  const std::string node = "<node name='k'/>", image = "<inputImage/>";
  const std::string manyRecords = kernel(
      0, "parameter int p&lt;enumValues:'" + repeat("x", 1 << 20) + "';>" + repeat(",q", 260));
  const auto withFunctions = [&](int count) {
    std::string nodes;
    for (int i = 0; i < count; ++i)
      nodes += "<node name='k'><evaluateParameters>" + std::to_string(i) +
               "}</evaluateParameters></node>";
    return kernel(1, repeat("x;", 2 << 20)) + nodes;
  };
  const struct {
    const char* what;
    std::string middle;
    Limit beyond;
  } asked[] = {
      {"inputs of a kernel", kernel(1024), Limit::None},
      {"more inputs of a kernel", kernel(1025), Limit::KernelInputs},
      {"nodes and images", repeat(node, 16000) + repeat(image, 384), Limit::None},
      {"more nodes and images", repeat(node, 16000) + repeat(image, 385), Limit::GraphNodes},
      {"inputs of all nodes", kernel(1024) + repeat(node, 64), Limit::None},
      {"more inputs of all nodes", kernel(1024) + repeat(node, 65), Limit::GraphInputs},
      {"entries given to 260 parameters", manyRecords, Limit::RecordBytes},
      {"ten thousand equal nodes", kernel(1, repeat("x;", 2 << 20)) + repeat(node, 10000),
       Limit::None},
      {"ten different nodes of 4 MiB", withFunctions(10), Limit::None},
      {"forty different nodes of 4 MiB", withFunctions(40), Limit::ShaderBytes},
  };
  for (const auto& c : asked) {
    EXPECT_EQ(beyondOf(graphWith(c.middle + "</graph>")), c.beyond) << c.what;
  }
  EXPECT_EQ(limitText(Limit::KernelInputs), "more than 1024 inputs of a kernel");
}

TEST(HostileGraphs, LargeTextsAreReadWhole) {
  constexpr std::size_t kNodes = limits::kGraphNodes;
  std::string nodes;
  for (std::size_t i = 0; i < kNodes; ++i) {
    const std::string n = std::to_string(i);
    nodes.append("<parameter name='p").append(n).append("' type='int'/><node id='n").append(n);
    nodes.append("'><evaluateParameters>{n").append(n).append("::x=p").append(n);
    nodes.append(";}</evaluateParameters></node>");
  }
  pbGraphInfo graph;
  ASSERT_EQ(readGraphText((graphWith(nodes) + "</graph>").c_str(), graph), 0);
  ASSERT_EQ(graph.nodes.size(), kNodes);
  EXPECT_EQ(graph.nodes.back().evaluateParameters, "{x=vlmg_p16383;}");

  pbGraphInfo described;
  const std::string text = repeat("ab", 5'000'000);
  const std::string entry = "<metadata name='description' value='" + text + "'/></graph>";
  ASSERT_EQ(readGraphText(graphWith(entry).c_str(), described), 0);
  EXPECT_EQ(described.description, text);
  EXPECT_EQ(readGraphText(graphWith(std::string(limits::kTextBytes, ' ')).c_str(), described), 1);
  EXPECT_EQ(described.beyond, Limit::TextBytes);
  EXPECT_TRUE(described.description.empty());
}

/// Every prefix of a text is either refused or read up to where it is cut.
TEST(HostileGraphs, TextsCutAnywhere) {
  const std::string text =
      "<?xml version='1.0'?><graph name='\xc3\xa9&amp;&#233;'><!-- \xe2\x82\xac -->"
      "<kernel><![CDATA[kernel k{input image1 i;}]]></kernel><node id='\xf0\x9f\x8e\xa8' name='k'>"
      "<evaluateParameters>{a::b=1;}</evaluateParameters></node></graph>";
  for (std::size_t length = 0; length <= text.size(); ++length) {
    pbGraphInfo graph;
    const std::string cut = text.substr(0, length);
    EXPECT_EQ(readGraphText(cut.c_str(), graph), length < text.find("<graph") + 6) << cut;
    EXPECT_EQ(graph.nodes.size(), length >= text.find("<node") + 5) << cut;
  }
}

}  // namespace
}  // namespace vellumtide
