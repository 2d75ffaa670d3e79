// What drivers say, read without one; and what Mesa says, at the lines of the files it came from.
#include "cli/build_errors/build_errors.h"

#include <gtest/gtest.h>

#include <cstring>

#include <nlohmann/json.hpp>

#include "cli/build_errors/shader_lines.h"
#include "tests/support/command_line.h"

namespace vellumtide::cli {
namespace {

using Json = nlohmann::json;

std::string describe(const std::vector<DriverMessage>& messages) {
  std::string text;
  for (const DriverMessage& m : messages) {
    text += (m.isError ? "E" : "W") + std::to_string(m.line) + "," + std::to_string(m.column) +
            (m.columns == DriverMessage::Columns::Expanded ? "x" : "") + "|" + m.text +
            (m.isCut ? "..." : "") + ";";
    for (const std::string& name : quotedNames(m.text))
      text += name + ";";
  }
  return text;
}

TEST(DriverMessages, FormsOfEachDriver) {
  const std::string filler = std::string(1010, 'x');
  const struct {
    std::string log;
    const char* messages;
  } kCases[] = {
      {"0:4(9): preprocessor warning: a\n0:95(12): error: `foo' bad\n0:95(12): error:    int a\n",
       "W4,9|a;E95,12x|`foo' bad\n   int a;foo;"},
      {"0:2(9): preprocessor error: Redefinition\n\n", "E2,9|Redefinition;"},
      {"Fragment info\n-------------\n0(95) : error C1008: undefined variable \"foo\"\r\n"
       "0(96) : warning C7022: w",
       "E95,0|C1008: undefined variable \"foo\";foo;W96,0|C7022: w;w;"},
      {"ERROR: 0:95: 'foo' : undeclared identifier\nERROR: 1 compilation errors.",
       "E95,0|'foo' : undeclared identifier;foo;"},
      {"ERROR: 0:95:12: Use\nWARNING: 0:9: w", "E95,12|Use;W9,0|w;"},
      {"ERROR: 0:7: error(#143) Undeclared identifier: foo",
       "E7,0|error(#143) Undeclared identifier: foo;foo;"},
      {"error: unresolved\nodd line\n", "E0,0|unresolved;E0,0|odd line;"},
      {"0:9999999999(1): error: x", "E0,0|0:9999999999(1): error: x;x;"},
      {"", ""},
      // A log as long as the module's buffer ends anywhere.
      {"0:1(1): error: " + filler.substr(9) + "\n0:95(1", "E1,1x|"},
      {"0:1(1): error: a" + filler, "E1,1x|a"},
  };
  for (const auto& [log, messages] : kCases) {
    const std::string got = describe(parseDriverMessages(log));
    EXPECT_EQ(got.substr(0, log.size() < 1000 ? got.npos : std::strlen(messages)), messages);
    EXPECT_EQ(got.ends_with("...;"), log.size() > 1000) << got;
    EXPECT_EQ(got.find("E95,1"), log.size() > 1000 ? got.npos : got.find("E95,1"));
  }
  const auto sections = splitDriverLog("K(v)\na(f)\n\n\n\nK(f)\nb\n\n", {"K"});
  ASSERT_EQ(sections.size(), 2u);
  EXPECT_EQ(sections[0].log, "a(f)\n\n");
  EXPECT_EQ(sections[1].log, "b");
}

// Each text reads, at the last column, at "@" after preprocessing.
TEST(ShaderLines, ColumnsAreFollowedBackThroughMacros) {
  const struct {
    const char* text;
    int line, column;  // of Mesa, which has these from the version that the tests run with
  } kCases[] = {
      {"      @", 1, 2},
      {"int a\t = \t @", 1, 9},
      {"#define float2 vec2\n\rfloat2 a = float2(1.0,1.0); @", 2, 25},
      {"#define dep \ndep float a = @", 2, 13},
      {"#define S  a  +   b  \nfloat c = S; float d = @", 2, 29},
      {"#define F(a) a -  1  \r\nfloat z = F(2.0); int y = @", 2, 28},
      {"#define Q(x) ((x)*(x))\n#define T float\nT a = Q( T ( 3.0 ) ); float b = @", 3, 56},
      {"#define A B C\n#define B \n#define C 2\nint z = A; @", 4, 14},
      {"#define N -1\nint z = 3 -N; @", 2, 17},
      {"#define F(a) /* x */ a /* y */ // z\nint z = F(1); @", 2, 12},
      {"#define e5 77\nfloat z = 1e5 + 0xe5 + 1.e5; @", 2, 30},
      {"int a; \\\n \\\n int b = @", 1, 16},
      {"#define F(a,b) a + b\nint z = F(1,\n  2\n\n * 3); @", 2, 22},
      {"#define F(a) a\nint z = F(\n1);\n\n@", 4, 1},
      {"#ifdef A\n#define B xx\n#else\n#define B y\n#endif\nB+@", 6, 3},
      {"int a = __LINE__; int b = @", 1, 20},
  };
  for (const auto& [text, line, column] : kCases) {
    const auto at = findAfterPreprocessing(text, line, column);
    EXPECT_EQ(at ? std::string(text).substr(*at, 1) : "nothing", "@") << text;
  }
  for (const char* unknown :
       {"#define P(a,b) a##b\nP(x,y) @", "#if Q > 1\n#define B xx\n#endif\nB @",
        "#define F(a) a\nF(@", "#define F(a) a\n#define G F\nG(1) @"}) {
    EXPECT_FALSE(
        findAfterPreprocessing(unknown, std::string(unknown).starts_with("#if") ? 4 : 2, 20))
        << unknown;
  }
}

TEST(SourceLines, PlacesAndExcerpts) {
  const std::string text =
      "\xEF\xBB\xBF"
      "ab\r\nc\xC3\xA9\td\rx\x1b\xFFy\n\xE6\x97\xA5z";
  const SourceLines lines(text);
  const struct {
    char mark;
    std::size_t line, column;
    const char* excerpt;
  } kCases[] = {{'a', 1, 1, "  ab\n  ^\n"},
                {'d', 2, 4, "  c\xC3\xA9\td\n    \t^\n"},
                {'y', 3, 4, "  x\xEF\xBF\xBD\xEF\xBF\xBDy\n     ^\n"},
                {'z', 4, 2, "  \xE6\x97\xA5z\n    ^\n"}};
  for (const auto& [mark, line, column, excerpt] : kCases) {
    const SourcePlace place = lines.placeOf(text.find(mark));
    EXPECT_EQ(place.line, line) << mark;
    EXPECT_EQ(place.column, column) << mark;
    EXPECT_EQ(lines.excerpt(text.find(mark)), excerpt) << mark;
  }
  const std::string longLine = std::string(5000, '.') + "@" + std::string(5000, '.');
  const std::string cut = SourceLines(longLine).excerpt(5000);
  EXPECT_LT(cut.size(), 250u);
  const std::size_t below = cut.find('\n') + 1;
  EXPECT_EQ(cut.find('^') - below, cut.find('@'));
  SourceLines("").excerpt(0);
}

using BuildErrors = CommandLine;

// "@" marks the place in each source and is not written.
TEST_F(BuildErrors, MesaErrorsAreShownWhereTheyAre) {
  const std::string head = "kernel K <> {\n input image4 src; output pixel4 dst;\n";
  const std::string whole = head + "void evaluatePixel() { dst = float4(1.0); }\n";
  std::string ones;
  while (ones.size() < 9000)
    ones += "1.0 + ";
  const struct {
    std::string source;
    const char* message;
  } kCases[] = {
      {head + "void evaluatePixel() { dst = @foo; }}", "`foo' undeclared"},
      {head + "void evaluatePixel()\n{\n dst = src\n @}\n}", "syntax error"},
      {head + "void evaluatePixel() { int i = @5 % 2; }}", "operator '%'"},
      {head + "void evaluatePixel() { dst = float4(@mix(1, src)); }}", "no matching function"},
      {head + "void evaluatePixel() { @int i = 1.5; }}", "initializer of type float"},
      {whole + "dependent float2 q;\nvoid evaluateDependents()\n{\n q = @bar;\n}}", "`bar'"},
      {head + "#define TWICE(x) ((x)+(x))\nvoid evaluatePixel() { dst = TWICE( TWICE(@baz) ); }}",
       "`baz'"},
      {head + "#define BAD nothing\nvoid evaluatePixel() { dst = @BAD; }}", "`nothing'"},
      {head + "/* a\n b */ void evaluatePixel() { dst = /* c\n d */ @foo; // e\n}}", "`foo'"},
      {head + "parameter float a\n<\n minValue : 0.0;\n>;\nvoid evaluatePixel() { dst = @b; }}",
       "`b'"},
      {head + "void evaluatePixel() { if (true) { dst = src;@\n", "syntax error"},
      {whole + "float x = 3.0\n@}\n", "syntax error"},
      {head + "\tvoid evaluatePixel() { /* \xE6\x97\xA5 */ dst\t=\t@foo; }}", "`foo'"},
      {head + "void evaluatePixel() { dst = float4(" + ones + "@foo); }}", "`foo'"},
      {"\xEF\xBB\xBF" + head + "void evaluatePixel() { dst = @union(src, 1); }}", "vlmk_union"},
      {"#define MINE vec2\n" + head + "void evaluatePixel() { dst = src +\\\n  @foo; }}", "`foo'"},
  };
  for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
    std::string files, expected;
    std::vector<std::string> starts;
    for (std::size_t i = 0; i < std::size(kCases); ++i) {
      std::string source;
      for (const char c : kCases[i].source)
        source += c == '\n' ? lineEnd : std::string(1, c);
      const std::size_t mark = source.find('@');
      source.erase(mark, 1);
      const SourcePlace place = SourceLines(source).placeOf(mark);
      const std::string name = std::to_string(i) + ".pbk";
      writeText(name, source);
      files += " " + name;
      starts.push_back(name + ":" + std::to_string(place.line) + ":" +
                       std::to_string(place.column) + ": error: ");
    }
    const std::string out = "\n" + run("check" + files).out;
    for (std::size_t i = 0; i < std::size(kCases); ++i) {
      const std::size_t at = out.find("\n" + starts[i]);
      ASSERT_NE(at, out.npos) << starts[i] << kCases[i].source << out;
      const std::string line = out.substr(at + 1, out.find('\n', at + 1) - at - 1);
      EXPECT_NE(line.find(kCases[i].message), line.npos) << line;
      EXPECT_EQ(out.find(line, at + line.size()), out.npos) << "once for both stages: " << line;
    }
  }
}

TEST_F(BuildErrors, GraphsSayWhichNodeAndWhatCannotBeMappedSaysSo) {
  std::string graph = "<graph name='G'><parameter name='amount' type='float'/>\n";
  for (int i = 0; i < 40; ++i) {
    const std::string n = std::to_string(i);
    graph += "<kernel>" + std::string(i % 2 ? "\r\n kernel K" : "<![CDATA[\n\tkernel K") + n +
             (i % 2 ? " &lt;> " : " <> ") +
             "{ input image4 s; output pixel4 d;\n parameter float r;" +
             " void evaluatePixel() { d = " + (i >= 38 ? "foo" : "s") + n + "; } }" +
             (i % 2 ? "" : "]]>") + "</kernel>\n";
  }
  graph +=
      "<node id='blur' name='K39'/><node id='twin' name='K39'/><node id='last' name='K38'>"
      "<evaluateParameters><![CDATA[void evaluateParameters()\r\n{\r\n\tlast::r = amuont;\r\n}"
      "]]></evaluateParameters></node><node id='lost' name='None'/>"
      "<connect fromNode='blur' toImage='o'/><outputImage type='image4' name='o'/></graph>";
  writeText("g.pbg", graph);
  const std::string out = run("check g.pbg").out;
  const SourceLines lines(graph);
  const auto place = [&](const char* mark) {
    const SourcePlace p = lines.placeOf(graph.find(mark));
    return "\ng.pbg:" + std::to_string(p.line) + ":" + std::to_string(p.column) + ": error: `";
  };
  for (const std::string& part :
       {place("foo39") + "foo39' undeclared (nodes blur, twin)\n",
        place("foo38") + "foo38' undeclared (node last)\n",
        place("amuont") +
            "amuont' undeclared (node last)\n  \tlast::r = amuont;\n  \t          ^\n",
        std::string("\ng.pbg: error: the node's kernel is not in the graph (node lost)\n")}) {
    EXPECT_NE(out.find(part), out.npos) << part << out;
  }

  writeText("early.pbk", "kernel K <> { output pixel4 d; } void evaluatePixel() { }");
  const Json report = Json::parse(run("check --json early.pbk").out)[0];
  const Json& error = report["errors"][0];
  EXPECT_EQ(error["stage"], "fragment");
  EXPECT_EQ(error["generatedText"], "\tevaluatePixel();");
  EXPECT_FALSE(error.contains("line"));
  EXPECT_NE(report["error"].get<std::string>().find("vellumtide glsl early.pbk --stage fragment"),
            std::string::npos);
}

}  // namespace
}  // namespace vellumtide::cli
