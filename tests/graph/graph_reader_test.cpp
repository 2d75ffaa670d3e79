#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "graph/graph_reader.h"

namespace vellumtide {
namespace {

/// Everything that was read, a line each.
std::string describe(const pbGraphInfo& g) {
  std::ostringstream out;
  out << g.name.view() << '|' << g.languageVersion << '|' << g.nameSpace.view() << '|'
      << g.vendor.view() << '|' << g.version << '|' << g.description << '\n';
  for (const pbParameter& p : g.parameters) {
    out << "par " << typeName(p.type) << ' ' << p.name.view();
    for (const pbValue* v : {&p.defaultValue, &p.minValue, &p.maxValue}) {
      out << ' ';
      if (v->isSet) out << v->cells.floatAt(0) << ',' << v->cells.floatAt(2);
    }
    const RelativePoint& point = p.aePointRelativeDefaultValue;
    out << ' ' << parameterTypeName(p.parameterType) << '|' << uiControlName(p.aeUIControl) << '|'
        << p.displayName.view() << '|' << p.aeDisplayName.view() << '|' << p.enumValues << '|'
        << p.aePopupString << '|' << point.isSet << point.x << ',' << point.y << '\n';
  }
  std::vector<pbVariable> images = g.inputs;
  if (!g.output.name.empty()) images.push_back(g.output);
  for (const pbVariable& v : images) {
    out << "image " << typeName(v.type) << ' ' << v.name.view() << '\n';
  }
  for (std::size_t i = 0; i < g.kernels.size(); ++i) {
    out << "kernel " << g.kernels[i].name.view() << " <" << g.kernelSources[i] << ">\n";
  }
  for (const pbgNodeInfo& n : g.nodes) {
    out << "node " << n.id.view() << '|' << n.name.view() << '|' << n.vendor.view() << '|'
        << n.nameSpace.view() << '|' << n.version << '|' << n.clientID.view() << " <"
        << n.evaluateParametersSource << "> <" << n.evaluateParameters << ">\n";
  }
  for (const pbgConnection& c : g.connections) {
    out << "connect " << static_cast<int>(c.kind) << ' ' << c.from.view() << '|'
        << c.fromOutput.view() << '|' << c.to.view() << '|' << c.toInput.view() << '\n';
  }
  return out.str();
}

constexpr const char* kEmpty = "|1|||1|\n";

struct GraphCase {
  const char* what;
  std::string text;
  std::string expected;  // empty: refused
};

const GraphCase kCases[] = {
    {"no graph", "kernel k{}", ""},
    {"wrong case", "<Graph/>", ""},
    {"graph is not the root", "<a><graph/></a>", ""},
    {"nothing", "", ""},
    {"alone", "<graph/>", kEmpty},
    {"not the first element, behind a byte-order mark",
     "\xef\xbb\xbf<?xml version='1.0'?><!-- - --><a/><graph name='g'/>", "g|1|||1|\n"},
    {"metadata",
     R"(<graph name='g' languageVersion='1.0'>
        <metadata name='description' value='a&#x41;&lt; b'/> <metadata name='vendor' value='v'/>
        <metadata name='namespace'/> <metadata value='x'/> <metadata name='version' value='7b'/>
        <metadata name='vendor2' value='w'/></graph>)",
     "g|1||v|7|aA< b\n"},
    {"integers that are none",
     "<graph languageVersion='x'><metadata name='version' value=''/></graph>", kEmpty},
    {"parameters",
     R"(<graph><node id='n'/><parameter name='p' type='float3'>
        <metadata name='defaultValue' type='int' value='1,2,3'/> <metadata name='minValue'/>
        <metadata name='parameterType' value='time'/> <metadata name='aeUIControl' value='aeColor'/>
        <metadata name='displayName' value='d'/> <metadata name='aeDisplayName' value='e'/>
        <metadata name='enumValues' value='f|g'/> <metadata name='aePopupString' value='h'/>
        <metadata name='aePointRelativeDefaultValue' value='.5,2,3'/> <x name='maxValue'/>
        </parameter> <parameter name='a'/> <parameter type='int'/> <parameter name='' type='t'/>
        </graph>)",
     "|1|||1|\npar float3 p 1,3 0,0  time|aeColor|d|e|f|g|h|10.5,2\n"
     "par      ||||||00,0\nnode n||||1| <> <>\n"},
    {"images",
     R"(<graph><outputImage name='o' type='image4'/> <outputImage name='x'/> <inputImage/>
        <inputImage type='image3' name='i'/></graph>)",
     "|1|||1|\nimage  \nimage image3 i\nimage image4 o\n"},
    {"kernels",
     "<graph><kernel>kernel  a\n{ }</kernel><kernel><!-- x -->kernel b{}</kernel><kernel/>"
     "<kernel><![CDATA[kernel  c\r\n{}]]></kernel></graph>",
     "|1|||1|\nkernel a <kernel a { }>\nkernel c <kernel  c\r\n{}>\n"},
    {"nodes",
     R"(<graph><node id='n' name='k' vendor='v' namespace='s' version='2' clientID='c'>
        <evaluateParameters>n::x=p</evaluateParameters> <evaluateParameters>y</evaluateParameters>
        </node> <parameter name='p' type='int'/>
        <node version='v'><evaluateParameters><a/>z</evaluateParameters></node></graph>)",
     "|1|||1|\npar int p    ||||||00,0\nnode n|k|v|s|2|c <n::x=p> <x=vlmg_p>\n"
     "node ||||1| <> <>\n"},
    {"connections",
     R"(<graph>
        <connect fromImage='i' fromNode='n' fromOutput='o' toNode='t' toInput='u'/>
        <connect fromNode='n' fromOutput='o' toNode='t' toInput='u'/>
        <connect fromNode='n' toImage='d' toNode='t' toInput='u'/> <connect/></graph>)",
     "|1|||1|\nconnect 1 i||t|u\nconnect 2 n|o|t|u\nconnect 3 n||d|\nconnect 2 |||\n"},
    {"names are cut at 31 bytes",
     R"(<graph>
        <node id='abcdefghijklmnopqrstuvwxyz0123456789' name='abcdefghijklmnopqrstuvwxyz012345'/>
        <connect fromNode='abcdefghijklmnopqrstuvwxyz0123456789'/></graph>)",
     "|1|||1|\nnode abcdefghijklmnopqrstuvwxyz01234|abcdefghijklmnopqrstuvwxyz01234|||1| <> <>\n"
     "connect 2 abcdefghijklmnopqrstuvwxyz01234|||\n"},
    {"what stands before an error counts",
     "<graph name='g'><node id='a'/><node id='b' id='c'/><node id='d'/>",
     "g|1|||1|\nnode a||||1| <> <>\nnode b||||1| <> <>\n"},
};

TEST(GraphReader, Documents) {
  for (const GraphCase& c : kCases) {
    pbGraphInfo graph;
    EXPECT_EQ(readGraphText(c.text.c_str(), graph), c.expected.empty()) << c.what;
    EXPECT_EQ(describe(graph), c.expected.empty() ? kEmpty : c.expected) << c.what;
  }
}

TEST(GraphReader, FilesFoldLineEndsAndMustBeWhole) {
  const std::string path =
      (std::filesystem::temp_directory_path() / "vellumtide_graph_test.pbg").string();
  const auto read = [&](const char* text, pbGraphInfo& graph) {
    std::ofstream(path, std::ios::binary) << text;
    return readGraphFile(path.c_str(), graph);
  };
  pbGraphInfo graph;
  EXPECT_EQ(read("<graph><kernel><![CDATA[a\r\nb\rc]]></kernel></graph>", graph), 0);
  EXPECT_EQ(graph.kernelSources.at(0), "a\nb\nc");
  pbGraphInfo other;
  EXPECT_EQ(read("<graph><node>", other), 1);
  EXPECT_EQ(read("", other), 1);
  std::filesystem::remove(path);
  EXPECT_EQ(readGraphFile(path.c_str(), other), 1);
}

}  // namespace
}  // namespace vellumtide
