#include <gtest/gtest.h>

#include <sstream>

#include "kernel/pbk_parser.h"

namespace vellumtide {
namespace {

void writeValue(std::ostream& out, const char* label, const pbValue& value) {
  if (value.isSet) out << ' ' << label << '=' << value.cells.floatAt(0);
}

/// Everything that was learned, a line each; the body last.
std::string describe(const pbKernelInfo& k) {
  std::ostringstream out;
  out << k.name.view() << '|' << k.languageVersion << '|' << k.nameSpace.view() << '|'
      << k.vendor.view() << '|' << k.version << '|' << k.description << '\n';
  const auto list = [&](const char* label, const std::vector<pbVariable>& variables) {
    for (const pbVariable& v : variables) {
      out << label << typeName(v.type) << ' ' << v.name.view() << '\n';
    }
  };
  list("in ", k.inputs);
  if (!k.output.name.empty()) list("out ", {k.output});
  list("dep ", k.dependents);
  for (const pbParameter& p : k.parameters) {
    out << "par " << typeName(p.type) << ' ' << p.name.view();
    writeValue(out, "default", p.defaultValue);
    writeValue(out, "min", p.minValue);
    writeValue(out, "max", p.maxValue);
    if (p.parameterType != pbParameterType::None)
      out << " type=" << parameterTypeName(p.parameterType);
    if (p.aeUIControl != pbUIControl::None) out << " ui=" << uiControlName(p.aeUIControl);
    if (!p.displayName.empty()) out << " name=" << p.displayName.view();
    if (!p.aeDisplayName.empty()) out << " aename=" << p.aeDisplayName.view();
    if (!p.enumValues.empty()) out << " enum=" << p.enumValues;
    if (!p.aePopupString.empty()) out << " popup=" << p.aePopupString;
    const RelativePoint& point = p.aePointRelativeDefaultValue;
    if (point.isSet) out << " rel=" << point.x << ',' << point.y;
    out << '\n';
  }
  return out.str() + k.body;
}

constexpr const char* kNothing = "|1|||1|\n";

struct KernelCase {
  const char* what;
  const char* source;
  std::string expected;
};

TEST(PBKParser, WholeKernels) {
  const KernelCase cases[] = {
      {"everything at once",
       "<languageVersion : 1.0;>\nkernel Name < namespace : \"a\"; vendor : 'b'; version : 12;\n"
       "description : \"c > \\\" d\"; > junk {\n"
       "input image4 src; output pixel4 dst;\n"
       "parameter float amount < minValue: -0.5; maxValue: 1.0; defaultValue: 0.25; >;\n"
       "dependent float2 center; dependent int n, m;\n"
       "void evaluateDependents() { if (true) { n = 1; } }\n"
       "void evaluatePixel() { dst = union(a, unionSize); } } tail } union",
       "Name|1|a|b|12|c > \\\" d\nin image4 src\nout pixel4 dst\n"
       "dep float2 center\ndep int n\ndep int m\npar float amount default=0.25 min=-0.5 max=1\n"
       "\ninput image4 src; output pixel4 dst;\nparameter float amount;\n"
       "dependent varying float2 center; dependent int n, m;\n"
       "void evaluateDependents() {\n#ifdef vlmk_VERTEX_SHADER\n if (true) { n = 1; } \n#endif\n}\n"
       "void evaluatePixel() { dst = vlmk_union(a, unionSize); } "},
      {"parameter metadata",
       "kernel k{parameter float2 "
       "p<aeUIControl:\"aePoint\";parameterType:'time';displayName:\"a;\";"
       "aeDisplayName:\"b>\";description:\"no > end\";enumValues:\"x|y\";"
       "aePointRelativeDefaultValue:float2(.25,-1);aeUIControl2:\"aeColor\";>;}",
       "k|1|||1|\npar float2 p type=time ui=aePoint name=a; aename=b> enum=x|y rel=0.25,-1\n"
       "parameter float2 p;"},
      {"entry lists carry over within a declaration, nothing else does",
       "kernel k{parameter float a<aePopupString:\"x\";defaultValue:1;displayName:\"A\";>,b;"
       "parameter int c,d<enumValues:\"y\";>;}",
       "k|1|||1|\npar float a default=1 name=A popup=x\npar float b popup=x\npar int c\n"
       "par int d enum=y\nparameter float a, b;parameter int c, d;"},
      {"comments are blanks everywhere",
       "/*<*/kernel//x\nk/*\n*/</**/vendor/*\"n\"*/:\"v\"//>\n>{input/**/image1/**/i//\n;a/*\n*/b//"
       "c",
       "k|1||v|1|\nin image1 i\ninput image1 i\n;a b\n"},
      {"preprocessor lines in front of the kernel are kept, the rest dropped",
       "int x;\n#define A \\\r\n 1 /* { */ // \"\r\n#b\n kernel k{\n#define C {\n}",
       "k|1|||1|\n#define A \\\r\n 1   \n\n#b\n\n\n#define C {\n"},
      {"a comment that begins on such a line ends where it ends",
       "#define A 1 /* } \n* { */ + 2 // \\\nx\nkernel k{a{ /* \n */ }}",
       "k|1|||1|\n#define A 1   + 2 \n\na{   }"},
      {"only the kernel's own brace is left out",
       "kernel k{\n#define TAP(i) { a; }\n#define B {\n'{' { b }}",
       "k|1|||1|\n\n#define TAP(i) { a; }\n#define B {\n'{' { b }"},
      {"a preprocessor line at the end of the text", "#a", std::string(kNothing) + "#a\n"},
      {"declarations that lack something are dropped",
       "kernel k{input;input image4;output;output x;parameter;dependent;dependent q;}",
       "k|1|||1|\ninput image4;output xdependent varying q;"},
      {"unknown types", "kernel k{input vec4 a b;output c d;parameter e f;dependent g h;}",
       "k|1|||1|\nin  a\nin  b\nout  d\ndep  h\npar  f\n"
       "input vec4 a b;output c d;parameter e f;dependent varying g h;"},
      {"section words act before the brace too",
       "union input image1 i; evaluateDependents { kernel k {x",
       std::string(kNothing) +
           "in image1 i\nvlmk_unioninput image1 i;evaluateDependents { kernel k {"
           "\n#ifdef vlmk_VERTEX_SHADER\nx"},
      {"union stays inside evaluateDependents, braces in literals and macros do not count",
       "kernel k{evaluateDependents{union '}'\n#x }\n}union}",
       "k|1|||1|\nevaluateDependents{\n#ifdef vlmk_VERTEX_SHADER\nunion '}'\n#x "
       "}\n\n#endif\n}vlmk_union"},
      {"a bracket in an unknown key's value ends the kernel's metadata",
       "kernel k<a:\"x>y\";vendor:\"v\";>{b}", "k|1|||1|\nb"},
      {"versions are numbers, also in quotes; none is 0",
       "<languageVersion:\"2.9\";>kernel k<version:>>{}", "k|2|||0|\n"},
      {"a brace that closes nothing", "}kernel k{a}b}", std::string("k|1|||1|\n")},
      {"a closing brace at depth 0 ends everything, quoted too", "\"}\" kernel k{}", kNothing},
      {"unclosed", "kernel k{\"a}", "k|1|||1|\n\"a}"},
      {"bytes above 127", "kernel \xc3\xa9t{\xc3\xa9\xff}", "t|1|||1|\n\xc3\xa9\xff"},
  };
  for (const KernelCase& c : cases) {
    pbKernelInfo kernel;
    PBKParser(c.source).parse(kernel);
    EXPECT_EQ(describe(kernel), c.expected) << c.what;
  }
}

TEST(PBKParser, NamesAreCutButTheBodyAndTheUniformNameAreNot) {
  pbKernelInfo kernel;
  PBKParser("kernel k{parameter int abcdefghijklmnopqrstuvwxyz0123456789;}").parse(kernel);
  EXPECT_EQ(kernel.parameters.at(0).name, "abcdefghijklmnopqrstuvwxyz01234");
  EXPECT_EQ(kernel.parameters.at(0).sourceName, "abcdefghijklmnopqrstuvwxyz0123456789");
  EXPECT_EQ(kernel.body, "parameter int abcdefghijklmnopqrstuvwxyz0123456789;");
}

TEST(PBKParser, LargeAndHostileSources) {
  const auto repeat = [](const char* piece, std::size_t bytes) {
    std::string text;
    while (text.size() < bytes)
      text += piece;
    return text;
  };
  constexpr std::size_t kMegabyte = 1'000'000;
  pbKernelInfo large;
  PBKParser("kernel k{" + repeat("a+=b; ", 10 * kMegabyte)).parse(large);
  EXPECT_EQ(large.body, repeat("a+=b; ", 10 * kMegabyte));
  pbKernelInfo commented;
  PBKParser("kernel k{" + repeat("/*\n", 10 * kMegabyte)).parse(commented);
  EXPECT_EQ(commented.body, " ");

  // Each comma asks for a record of its own with a copy of the whole list.
  const auto withParameters = [&](std::size_t bytes) {
    pbKernelInfo kernel;
    PBKParser("kernel k{parameter int a<enumValues:\"" + repeat("x|", kMegabyte) + "\";>" +
              repeat(",b", bytes) + ";c}")
        .parse(kernel);
    return kernel;
  };
  EXPECT_EQ(withParameters(400).parameters.size(), 201u);
  const pbKernelInfo greedy = withParameters(kMegabyte);
  EXPECT_EQ(greedy.beyond, Limit::RecordBytes);
  EXPECT_TRUE(greedy.name.empty() && greedy.parameters.empty() && greedy.body.empty());

  const auto withInputs = [&](std::size_t count) {
    pbKernelInfo kernel;
    PBKParser("kernel k{input image4" + repeat(" a", 2 * count) + ";}").parse(kernel);
    return kernel;
  };
  EXPECT_EQ(withInputs(limits::kKernelInputs).inputs.size(), limits::kKernelInputs);
  EXPECT_EQ(withInputs(limits::kKernelInputs + 1).beyond, Limit::KernelInputs);
}

}  // namespace
}  // namespace vellumtide
