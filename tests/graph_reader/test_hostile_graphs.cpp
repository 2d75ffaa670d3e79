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
  pbGraphInfo graph;
  EXPECT_EQ(readGraphText(withAttributes(64).c_str(), graph), 0);
  EXPECT_EQ(readGraphText(withAttributes(65).c_str(), graph), 1);
}

TEST(HostileGraphs, LargeTextsAreReadWhole) {
  constexpr std::size_t kNodes = 100'000;
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
  EXPECT_EQ(graph.nodes.back().evaluateParameters, "{x=vlmg_p99999;}");

  pbGraphInfo described;
  const std::string text = repeat("ab", 5'000'000);
  const std::string entry = "<metadata name='description' value='" + text + "'/></graph>";
  ASSERT_EQ(readGraphText(graphWith(entry).c_str(), described), 0);
  EXPECT_EQ(described.description, text);
  EXPECT_EQ(readGraphText(graphWith(std::string(kGraphTextLimit, ' ')).c_str(), described), 1);
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
