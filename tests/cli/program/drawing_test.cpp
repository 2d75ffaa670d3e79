#include <regex>

#include "tests/support/command_line.h"

namespace vellumtide::cli {
namespace {

using Drawings = CommandLine;

int count(const std::string& text, const std::string& pattern) {
  const std::regex regex(pattern);
  return static_cast<int>(
      std::distance(std::sregex_iterator(text.begin(), text.end(), regex), std::sregex_iterator()));
}

TEST_F(Drawings, HostileNamesStayTexts) {
  const std::string names[] = {"&quot;];evil[x=&quot;", "&lt;/TD&gt;&lt;B&gt;", "\\N\\\"}{",
                               "\xFF\xC3(", "a->b:i0;"};
  std::string graph = "<?xml version='1.0' encoding='ISO-8859-1'?><graph name='&lt;b&gt;&quot;}'>";
  graph += "<inputImage type='image4' name='" + names[0] + "'/>";
  graph += "<outputImage type='image4' name='" + names[3] + "'/>";
  graph +=
      "<kernel>kernel K &lt;&gt; { input image4 s; parameter float p; output pixel4 d; void "
      "evaluatePixel() { d = sample(s, outCoord()); } }</kernel>";
  for (const std::string& name : names) {
    graph += "<node id='" + name + "' name='K'><evaluateParameters>void evaluateParameters() { " +
             name + "::p = &quot;&gt;&lt;/TABLE&gt;&quot;; }</evaluateParameters></node>";
    graph += "<connect fromImage='" + names[0] + "' toNode='" + name + "' toInput='s'/>";
  }
  graph +=
      "<node id='odd' name='&lt;missing&gt;'/><connect fromNode='no&gt;where' toNode='odd' "
      "toInput='s'/><connect fromNode='a-&gt;b:i0;' fromOutput='d' toImage='o'/></graph>";
  writeText("g.pbg", graph);
  const Outcome dot = run("inspect g.pbg --graph dot");
  ASSERT_EQ(dot.status, 0) << dot.error;
  EXPECT_GT(count(dot.out, "&quot;\\];evil\\[x=&quot;"), 0) << dot.out;
  EXPECT_EQ(count(dot.out, "\"\\];evil"), 0) << dot.out;
  EXPECT_EQ(count(dot.out, "\n  node[0-9]+ \\[label=<<TABLE"), 6);
  EXPECT_EQ(count(dot.out, "\n  input0 -> node[0-4]:i0:w;"), 5);
  EXPECT_EQ(count(dot.out, "\n  node4:o:e -> output;"), 1);
  EXPECT_EQ(count(dot.out, "\n  missing0 -> node5;"), 1);
  EXPECT_EQ(count(dot.out, "there is no such (node|kernel)"), 2);

  // Graphviz takes it: five nodes, all edges, no element that a name brought in.
  const Outcome svg = run("inspect g.pbg --graph svg -o g.svg");
  ASSERT_EQ(svg.status, 0) << svg.error;
  EXPECT_EQ(svg.out, "");
  const std::string text = readText("g.svg");
  EXPECT_EQ(count(text, "class=\"edge\""), 7);
  EXPECT_EQ(count(text, "class=\"node\""), 9);
  EXPECT_EQ(count(text, "&lt;/TD&gt;&lt;B&gt;"), 1);
  EXPECT_EQ(count(text, "<B>|<TD"), 0);
}

TEST_F(Drawings, AKernelIsOneNodeAndGraphvizMayBeAbsent) {
  writeText("k.pbk", kernelText("dst = src;",
                                "parameter float a < displayName : \"How Much\"; "
                                "defaultValue : 0.5; >;"));
  const Outcome dot = run("inspect k.pbk --graph dot");
  EXPECT_EQ(count(dot.out, "\n  [a-z0-9]+ \\[label=<<TABLE"), 1);
  for (const char* part : {"<B>Test</B>", "src", "dst", "How Much", "0.5"})
    EXPECT_NE(dot.out.find(part), std::string::npos) << part;
  const Outcome absent = run("inspect k.pbk --graph svg -o k.svg", "PATH=/nowhere");
  EXPECT_EQ(absent.status, 1);
  EXPECT_NE(absent.error.find("apt-get install graphviz"), std::string::npos) << absent.error;
  EXPECT_EQ(filesLike("k.svg"), "");
}

}  // namespace
}  // namespace vellumtide::cli
