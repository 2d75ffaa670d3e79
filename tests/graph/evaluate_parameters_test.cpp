#include <gtest/gtest.h>

#include "graph/node_shaders.h"

namespace vellumtide {
namespace {

struct RewriteCase {
  const char* source;
  const char* expected;
};

TEST(EvaluateParameters, Rewriting) {
  const RewriteCase cases[] = {
      {"void evaluateParameters()\n{\n\tBlur::radius = amount;\n}\n",
       "void evaluateParameters()\n{\nradius = vlmg_amount;\n}"},
      {"{ _gain amount2 amount; { amount } } after }",
       "{ _vlmg_gain amount2 vlmg_amount; { vlmg_amount } }"},
      // The own id swallows everything up to an identifier or a semicolon.
      {"{Blur::amount Blur : 1 , x;Blur = 1;\n#Blur x", "{amount x;\n#  x"},
      // Behind a line feed, tabs and line feeds go, blanks stay, and a line comment is a line feed.
      {"\t\na\n\n\t \tb//c\n\n\td\r\n\r\n", "\t\na\n \tb\nd\r\n\r\n"},
      // A colon looks at the character behind the next one.
      {"a:b:c::d:::e:", "a  :   :"},
      {": :x", " :x"},
      {":", ":"},
      {"{':{:'}", "{' :'}"},
      {"/* amount */ \"amount\" '}'", "  \"vlmg_amount\" '}"},
      {"}a", "}a"},
      {"", ""},
  };
  pbGraphInfo graph;
  graph.parameters.emplace_back(pbElementType::Float, "amount");
  graph.parameters.emplace_back(pbElementType::Float, "_gain");
  for (const RewriteCase& c : cases) {
    pbgNodeInfo node;
    node.id = "Blur";
    node.evaluateParametersSource = c.source;
    node.parse(graph);
    EXPECT_EQ(node.evaluateParameters, c.expected) << c.source;
  }
}

TEST(NodeShaders, TheFirstKernelOfTheNameIsUsedAndNoneLeavesTheTexts) {
  pbGraphInfo graph;
  graph.kernels.resize(3);
  graph.nodes.resize(2);
  graph.kernels[1].name = graph.kernels[2].name = graph.nodes[0].name = "k";
  graph.kernels[1].body = "FIRST";
  graph.nodes[0].evaluateParameters = "FUNCTION";
  graph.nodes[1].name = "K";
  const KernelsByName kernels(graph);
  for (const bool isIndexed : {false, true}) {
    std::string vertex = "old";
    std::string fragment = "old";
    const auto generate = [&](std::size_t node) {
      return isIndexed ? generateNodeShaders(graph, kernels, node, vertex, fragment, 0)
                       : generateNodeShaders(graph, node, vertex, fragment, 0);
    };
    EXPECT_EQ(generate(1), -1);
    EXPECT_EQ(vertex + fragment, "oldold");
    EXPECT_EQ(generate(0), 0);
    EXPECT_NE(fragment.find("\n\nFIRST\n\nFUNCTION\nvoid main"), std::string::npos);
  }
}

}  // namespace
}  // namespace vellumtide
