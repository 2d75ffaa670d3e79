#include <nlohmann/json.hpp>

#include "glsl/shader_text.h"
#include "kernel/pbk_parser.h"
#include "tests/support/command_line.h"

namespace vellumtide::cli {
namespace {

using Json = nlohmann::json;

using Commands = CommandLine;

TEST_F(Commands, InspectKernelAsJson) {
  writeText("k.pbk",
            kernelText("dst = src;",
                       "parameter float3 f < defaultValue : float3(0.1, -0.0, 3e38f); "
                       "displayName : \"D\xFF\"; >;"
                       "parameter int2 n < minValue : int2(-2, 7); aeUIControl : \"nothing\"; >;"
                       "parameter bool2 b < maxValue : bool2(true, false); >;"
                       "parameter image4 i; parameter int e < parameterType : \"enum\"; "
                       "aeUIControl : \"aePopup\"; aePopupString : \"x|y\"; >; dependent int q;"));
  const Outcome outcome = run("inspect k.pbk --json");
  ASSERT_EQ(outcome.status, 0) << outcome.error;
  const Json json = Json::parse(outcome.out);
  EXPECT_EQ(json["kind"], "kernel");
  EXPECT_EQ(json["version"], 3);
  EXPECT_EQ(json["inputs"], Json::parse(R"([{"type":"image4","name":"src"}])"));
  EXPECT_EQ(json["dependents"], Json::parse(R"([{"type":"int","name":"q"}])"));
  const Json& parameters = json["parameters"];
  EXPECT_EQ(parameters[0]["defaultValue"]["cells"][0].dump(), "0.10000000149011612");
  EXPECT_EQ(parameters[0]["displayName"], "D\xEF\xBF\xBD");
  EXPECT_EQ(parameters[0]["minValue"], Json::parse(R"({"isSet":false,"cells":[0.0,0.0,0.0]})"));
  EXPECT_EQ(parameters[1]["minValue"], Json::parse(R"({"isSet":true,"cells":[-2,7]})"));
  EXPECT_EQ(parameters[1]["aeUIControl"], "");
  EXPECT_EQ(parameters[2]["maxValue"], Json::parse(R"({"isSet":true,"cells":[true,false]})"));
  EXPECT_EQ(parameters[3]["defaultValue"]["cells"], Json::array());
  EXPECT_EQ(parameters[4]["parameterType"], "enum");
  EXPECT_EQ(parameters[4]["aePopupString"], "x|y");
  EXPECT_EQ(json["slots"], Json::parse(R"({"inputs":[0],"parameters":[44,34,4,-1,24]})"));
  EXPECT_EQ(outcome.out.find("{\n  \"kind\": \"kernel\",\n  \"name\": \"Test\""), 0u);

  const Outcome text = run("inspect k.pbk");
  for (const char* part : {"kernel Test, version 3", "fixed 44-46", "none", "x|y", "int2"}) {
    EXPECT_NE(text.out.find(part), std::string::npos) << part << " in\n" << text.out;
  }
}

// Cells stay as they read, with what is meant and its place beside those that differ.
TEST_F(Commands, MeantValuesAreShownWithTheirPlaces) {
  writeText("k.pbk", kernelText("dst = src;",
                                "parameter float2 size <\n\tminValue : float2(0.0, 0.0);\n\t"
                                "maxValue : /* \xC3\xA4 */ float2(200.0); defaultValue : 1e1; >;"
                                "parameter float2 at < aeUIControl : \"aePoint\"; defaultValue : "
                                "float2(9.0, 9.0); aePointRelativeDefaultValue : float2(0.5); >;"));
  const Json kernel = Json::parse(run("inspect k.pbk --json").out)["parameters"];
  EXPECT_EQ(kernel[0]["minValue"], Json::parse(R"({"isSet":true,"cells":[0.0,0.0]})"));
  EXPECT_EQ(kernel[0]["maxValue"]["cells"], Json::parse("[200.0,0.0]"));
  EXPECT_EQ(kernel[0]["maxValue"]["meant"], Json::parse("[200.0,200.0]"));
  EXPECT_EQ(kernel[0]["maxValue"]["column"], 21);
  EXPECT_EQ(kernel[0]["maxValue"]["line"].get<int>(), kernel[0]["defaultValue"]["line"]);
  EXPECT_EQ(kernel[1]["aePointRelativeDefaultValue"]["meant"], Json::parse("[0.5,0.5]"));
  const std::string text = run("inspect k.pbk").out;
  for (const char* part : {"10 each", "200 each", "50%,50%",
                           "column 21: maxValue of \"size\" is meant as 200 each, "
                           "its cells read 200,0"}) {
    EXPECT_NE(text.find(part), std::string::npos) << part << " in\n" << text;
  }
  writeText("g.pbg",
            "\xEF\xBB\xBF<graph name='G'>\r\n<parameter name='lost'/><parameter name='p' "
            "type='float2'><metadata value='1,2' name='minValue'/>\r\n<metadata type='\xC3\xA4' "
            "value = '3' name='maxValue'/></parameter></graph>");
  const Json graph = Json::parse(run("inspect g.pbg --json").out)["parameters"];
  EXPECT_FALSE(graph[0]["minValue"].contains("meant"));
  EXPECT_EQ(
      graph[0]["maxValue"],
      Json::parse(R"({"isSet":true,"cells":[3.0,0.0],"meant":[3.0,3.0],"line":3,"column":29})"));
}

TEST_F(Commands, InspectGraphAndPrintItsNodes) {
  writeText("g.pbg",
            "<graph name='G' languageVersion='1.0'><metadata name='vendor' value='V'/>"
            "<parameter name='amount' type='float'><metadata name='defaultValue' "
            "value='0.5'/></parameter>"
            "<inputImage type='image4' name='a'/><outputImage type='image4' name='o'/>"
            "<kernel><![CDATA[kernel K <> { input image4 s; output pixel4 d; parameter float r;"
            " void evaluatePixel() { d = r * sample(s, outCoord()); } }]]></kernel>"
            "<node id='one' name='K'><evaluateParameters><![CDATA[void evaluateParameters()\n"
            "{ one::r = amount; }]]></evaluateParameters></node><node id='two' name='Missing'/>"
            "<connect fromImage='a' toNode='one' toInput='s'/><connect fromNode='one' "
            "fromOutput='d' toImage='o'/>"
            "</graph>");
  const Json json = Json::parse(run("inspect g.pbg --json").out);
  EXPECT_EQ(json["kind"], "graph");
  EXPECT_EQ(json["kernels"][0]["name"], "K");
  EXPECT_FALSE(json["kernels"][0].contains("kind"));
  EXPECT_FALSE(json["kernels"][0].contains("slots"));
  EXPECT_EQ(json["nodes"][0]["evaluateParameters"],
            "void evaluateParameters()\n{ r = vlmg_amount; }");
  EXPECT_EQ(json["connections"][1],
            Json::parse(R"({"from":"one","fromOutput":"d","to":"o","toInput":"","kind":3})"));
  EXPECT_EQ(json["slots"], Json::parse(R"({"inputs":[0],"parameters":[44]})"));

  EXPECT_NE(run("glsl g.pbg --stage fragment --node one").out.find("uniform float vlmg_amount;\n"),
            std::string::npos);
  expectEndings("glsl g.pbg --stage vertex ", {{"--node three", 2, "its nodes are one, two"},
                                               {"", 2, "its nodes are one, two"},
                                               {"--node two", 3, "Missing"}});
}

TEST_F(Commands, GlslIsTheExactText) {
  const std::string text = kernelText("dst = sample(src, outCoord());", "dependent bool2 _d;");
  writeText("k.pbk", text);
  pbKernelInfo kernel;
  PBKParser(text).parse(kernel);
  for (const auto& [option, order] : {std::pair("", 18), {" --order 3", 3}, {" --order 24", 24}}) {
    std::string vertexText, fragmentText;
    generateKernelShaders(kernel, order, vertexText, fragmentText);
    EXPECT_EQ(run(std::string("glsl k.pbk --stage vertex") + option).out, vertexText);
    EXPECT_EQ(run(std::string("glsl k.pbk --stage fragment") + option).out, fragmentText);
  }
}

TEST_F(Commands, CompletionKnowsTheOptions) {
  for (const char* shell : {"bash", "zsh", "fish"}) {
    const std::string script = run(std::string("completion ") + shell).out;
    EXPECT_NE(script.find("downsample"), std::string::npos) << shell;
    EXPECT_NE(script.find("8 16 32"), std::string::npos) << shell;
    EXPECT_EQ(script.find("--here"), std::string::npos) << shell;
  }
  const Outcome words =
      run("completion bash > c && bash -c '. ./c; COMP_WORDS=(vellumtide project render --ro) "
          "COMP_CWORD=3;"
          " _vellumtide; echo ${COMPREPLY[*]}'");
  EXPECT_EQ(words.out, "--root-folder\n");
}

// Bad input to the commands that only read.
TEST_F(Commands, RefusalsHaveTheirStatusAndSayWhere) {
  writeText("empty.pbk", "");
  writeText("noise.pbk", std::string("\0\1\xFF{{{}};;\"'/*", 14));
  writeText("long.pbk", [] {
    std::string text;
    while (text.size() < 10'000'000)
      text += "lorem ipsum (dolor) < sit ; \"amet\" ";
    return text;
  }());
  writeText("text.pbg", "no XML at all");
  writeText("k.pbk", kernelText("dst = src;"));
  writeText("k.PBK", kernelText("dst = src;"));
  std::filesystem::create_directory(file("folder.pbk"));
  expectEndings(
      "",
      {
          {"inspect missing.pbk", 3, "missing.pbk: there is no such file"},
          {"inspect folder.pbk", 3, "folder.pbk: is a folder"},
          {"inspect empty.pbk --json", 3, "empty.pbk: holds no kernel"},
          {"inspect noise.pbk", 3, "noise.pbk: holds no kernel"},
          {"glsl long.pbk --stage vertex", 3, "long.pbk: holds no kernel"},
          {"inspect text.pbg", 3, "text.pbg: holds no graph"},
          {"inspect k.PBK", 3, "k.PBK: unknown extension"},
          {"glsl k.pbk --stage middle", 2, "--stage"},
          {"glsl k.pbk", 2, "--stage"},
          {"glsl k.pbk --stage vertex --order -1", 2, "--order"},
          {"glsl k.pbk --stage vertex --node n", 2, "has no nodes"},
          {"inspect", 2, "FILE"},
          {"inspect k.pbk --nothing", 2, "--nothing"},
          {"", 2, "Commands:"},
          {"inspect k.pbk -o k.svg", 2, "--graph"},
          {"inspect k.pbk --graph png", 2, "--graph"},
          {"inspect k.pbk --graph dot -o nowhere/k.dot", 4, "nowhere/k.dot: cannot be written"},
          {"paint k.pbk", 2, "there is no command paint (see"},
          {"rendr k.pbk", 2, "there is no command rendr; did you mean render?"},
          {"project shwo", 2, "there is no command shwo; did you mean show?"},
          {"glsl --staeg=vertex", 2, "--staeg; did you mean --stage? (see vellumtide glsl --help)"},
          {"help project paint", 2, "there is no command paint"},
          {"inspect -- --json", 3, "--json: unknown extension"},
          {"--help >/dev/full", 1, "standard output"},
          {"inspect k.pbk >/dev/full", 1, "standard output"},
      });
  for (const char* help : {"--help", "inspect --help", "help glsl", "render --help", "--version"}) {
    const Outcome outcome = run(help);
    EXPECT_EQ(outcome.status, 0) << help;
    EXPECT_NE(outcome.out.find(help[0] == '-' ? "ellumtide" : "Usage:"), std::string::npos) << help;
  }
}

TEST_F(Commands, ColourIsForTerminalsOfThoseWhoWantIt) {
  const struct {
    const char* environment;
    bool colored;
  } kCases[] = {{"TERM=xterm NO_COLOR=", true},
                {"TERM=xterm NO_COLOR=1", false},
                {"TERM=dumb NO_COLOR=", false}};
  for (const auto& [environment, colored] : kCases) {
    const Outcome shown = run("--version | env " + std::string(environment) + " script -qec '" +
                              VELLUMTIDE_EXECUTABLE + " paint' /dev/null");
    EXPECT_EQ(shown.status, 2) << environment;
    EXPECT_NE(shown.out.find("there is no command paint"), std::string::npos) << shown.out;
    EXPECT_EQ(shown.out.find('\033') != std::string::npos, colored) << environment;
  }
  EXPECT_EQ(run("paint", "TERM=xterm NO_COLOR=").error.find('\033'), std::string::npos);
}

}  // namespace
}  // namespace vellumtide::cli
