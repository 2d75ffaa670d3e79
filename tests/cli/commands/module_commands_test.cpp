// The commands that ask the module: check, info, about and project.
#include <nlohmann/json.hpp>

#include "tests/support/command_line.h"

namespace vellumtide::cli {
namespace {

using Json = nlohmann::json;
using ModuleCommands = CommandLine;

constexpr const char* kMarked = "dst = float4(amount, 0.0, 0.0, 1.0);";
constexpr const char* kAmount =
    "parameter float amount < aeDisplayName : \"Amount\"; >; parameter float2 p;";

TEST_F(ModuleCommands, CheckReportsEachProgramAndGoesOn) {
  writeText("good.pbk", kernelText(kMarked, kAmount));
  writeText("bad.pbk", kernelText("dst = missing();"));
  const Outcome outcome = run("check good.pbk bad.pbk missing.pbk good.pbk --json");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.error, "vellumtide: 2 of 4 programs failed\n");
  const Json reports = Json::parse(outcome.out);
  ASSERT_EQ(reports.size(), 4u);
  EXPECT_EQ(reports[0], reports[3]);
  EXPECT_EQ(reports[0]["ok"], true);
  EXPECT_EQ(reports[0]["name"], "Test");
  EXPECT_EQ(reports[0]["inputs"][0]["slot"], 0);
  EXPECT_EQ(reports[0]["parameters"][1]["controls"],
            Json::parse(R"([{"index":45,"label":"p x"},{"index":46,"label":"p y"}])"));
  EXPECT_NE(reports[1]["error"].get<std::string>().find("\nbad.pbk:3:29: error: no function"),
            std::string::npos);
  EXPECT_EQ(reports[1]["errors"][0]["line"], 3);
  EXPECT_EQ(reports[1]["errors"][0]["column"], 29);
  EXPECT_NE(reports[2]["error"].get<std::string>().find("no such file"), std::string::npos);
  EXPECT_NE(run("check good.pbk").out.find("parameter amount: 44 \"Amount\""), std::string::npos);
  EXPECT_FALSE(reports[0].contains("notes"));
  writeText("meant.pbk",
            kernelText("dst = float4(p, p);", "\nparameter float2 p < maxValue : float2(7.0); >;"));
  EXPECT_NE(run("check meant.pbk")
                .out.find(":33: note: maxValue of \"p\" is meant as 7 each, its "
                          "cells read 7,0\n"),
            std::string::npos);
  EXPECT_EQ(run("check good.pbk", "__EGL_VENDOR_LIBRARY_DIRS=/nowhere").status, 5);
}

// A driver that crashes or never returns, played by a module.
TEST_F(ModuleCommands, ACrashIsTheResultOfItsProgram) {
  writeText("good.pbk", kernelText(kMarked, kAmount));
  const struct {
    const char *module, *message;
  } kCases[] = {{MISBEHAVING_MODULES "/crashing_module.so", "ended by signal"},
                {MISBEHAVING_MODULES "/hanging_module.so", "took longer than 1 second"}};
  for (const auto& [module, message] : kCases) {
    std::filesystem::create_directory(file("tmp"));
    const Outcome outcome =
        run("check good.pbk --limit 1 --module " + std::string(module), "TMPDIR=tmp");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_TRUE(std::filesystem::is_empty(file("tmp"))) << "what the child left behind";
    EXPECT_NE(outcome.out.find(message), std::string::npos) << outcome.out;
  }
}

TEST_F(ModuleCommands, DialogsSayWhatTheModuleSays) {
  writeText("good.pbk", kernelText(kMarked, kAmount));
  EXPECT_EQ(run("info good.pbk").out, "Pixel Bender Kernel : Test\nversion : 3\nVendor : v\n\n\n");
  const std::string about = run("about").out;
  for (const char* part : {"Vellumtide v 1.2.2", "OpenGL vendor  : ", "GLSL   version : "}) {
    EXPECT_NE(about.find(part), std::string::npos) << about;
  }
  const Json gl = Json::parse(run("--json --version --gl").out)["gl"];
  EXPECT_EQ(gl, Json::parse(run("about --json").out)["gl"]);
  EXPECT_NE(about.find(gl.at("glslVersion").get<std::string>()), std::string::npos);
}

TEST_F(ModuleCommands, ProjectsKeepValuesAndFindLostPrograms) {
  writeText("good.pbk", kernelText(kMarked, kAmount));
  writeImageFile(file("in.exr"), headless::World(4, 4, PF_PixelFormat_ARGB128), 1, {});
  ASSERT_EQ(run("project new p.json good.pbk -i in.exr -p Amount=0.75").status, 0);
  const auto expectRendered = [&](const std::string& options) {
    std::filesystem::remove(file("out.exr"));
    const Outcome outcome = run("project render p.json -o out.exr" + options);
    ASSERT_EQ(outcome.status, 0) << outcome.error;
    expectPixel(readImageFile(file("out.exr")).pixels, 1, 1, {0.75, 0, 0, 1}, 1e-6);
  };
  expectRendered("");
  std::filesystem::create_directories(file("found/deep"));
  std::filesystem::rename(file("good.pbk"), file("found/deep/good.pbk"));
  expectRendered(" --root-folder found");
  EXPECT_NE(run("project show p.json --json --root-folder found").out.find("\"value\": 0.75"),
            std::string::npos);
  EXPECT_NE(run("project show p.json --root-folder found").out.find("VTD: Test"),
            std::string::npos);

  writeText("broken.json", "{\"format\":");
  expectEndings("project ",
                {{"render p.json -o x.exr", 3, "--root-folder"},
                 {"render p.json -o x.exr --instance 2", 2, "no instance 2"},
                 {"render p.json -o x.jpeg", 4, "has to end in"},
                 {"render broken.json -o x.exr", 1, "broken.json"},
                 {"render missing.json -o x.exr", 1, "missing.json"},
                 {"new q.json missing.pbk -i in.exr", 3, "no such file"},
                 {"new q.json found/deep/good.pbk -i in.exr -p Nothing=1", 2, "\"Amount\""},
                 {"", 2, "a command has to follow"}});
  EXPECT_EQ(filesLike("x.") + filesLike("q."), "");
}

}  // namespace
}  // namespace vellumtide::cli
