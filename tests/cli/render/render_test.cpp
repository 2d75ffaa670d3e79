#include "tests/support/command_line.h"

namespace vellumtide::cli {
namespace {

using headless::World;

class Render : public CommandLine {
 protected:
  // A picture of 8 x 6 pixels that differ, alpha included.
  void writePicture(const std::string& name, PF_PixelFormat format = PF_PixelFormat_ARGB32) {
    World world(8, 6, format);
    for (int y = 0; y < 6; ++y) {
      for (int x = 0; x < 8; ++x)
        world.setPixel(x, y, x / 7.0, y / 5.0, (x ^ y) / 7.0, 1 - x * y / 70.0);
    }
    writeImageFile(file(name), world, 1, {});
  }
  void expectSame(const std::string& a, const std::string& b) {
    const ImageFile one = readImageFile(file(a)), two = readImageFile(file(b));
    EXPECT_EQ(one.pixels.format(), two.pixels.format());
    EXPECT_EQ(one.pixels.checksum(), two.pixels.checksum()) << a << " and " << b;
    EXPECT_EQ(one.sampleType, two.sampleType);
  }
  // Renders `program` with `arguments` and returns the message of the refusal.
  std::string refusal(const std::string& arguments, int status,
                      const std::string& environment = "") {
    const Outcome outcome = run("render " + arguments + " -o refused.png", environment);
    EXPECT_EQ(outcome.status, status) << arguments << "\n" << outcome.error;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(filesLike("refused"), "") << arguments;
    return outcome.error;
  }
};

TEST_F(Render, PassesEveryDepthThroughAndWritesAnyOther) {
  writeText("k.pbk", kernelText("dst = sampleNearest(src, outCoord());"));
  writePicture("8.png");
  writePicture("16.png", PF_PixelFormat_ARGB64);
  writePicture("32.exr", PF_PixelFormat_ARGB128);
  for (const char* name : {"8.png", "16.png", "32.exr"}) {
    const std::string extension = std::filesystem::path(name).extension().string();
    const Outcome outcome = run("render k.pbk -i " + std::string(name) + " -o same" + extension);
    ASSERT_EQ(outcome.status, 0) << outcome.error;
    if (extension == ".png") {
      expectSame(name, "same" + extension);
    } else {
      expectPixel(readImageFile(file("same.exr")).pixels, 3, 2,
                  readImageFile(file(name)).pixels.pixel(3, 2), 1e-6);
    }
  }
  EXPECT_EQ(
      run("render k.pbk -i 8.png -o deep.exr --depth 32 --sample-type half --pixel-aspect 10/11")
          .status,
      0);
  const ImageFile deep = readImageFile(file("deep.exr"));
  EXPECT_EQ(deep.sampleType, SampleType::Half);
  EXPECT_NEAR(deep.pixelAspect, 10.0 / 11, 1e-6);
  EXPECT_EQ(run("render k.pbk -i deep.exr -o again.exr").status, 0);
  expectSame("deep.exr", "again.exr");  // half stays half
}

TEST_F(Render, ControlsReachTheKernelByTheirLabels) {
  writeText(
      "k.pbk",
      kernelText("dst = float4(amount / 10.0, place.x / 100.0, mode == 2 && on.y ? tint.b : 0.0, "
                 "m[1][0] + turn / 360.0);",
                 "parameter float amount < aeDisplayName : \"Amount = x\"; maxValue : 0.9; "
                 "minValue : 0.0; >;"
                 "parameter float2 place < aeUIControl : \"aePoint\"; >;"
                 "parameter float4 tint < aeUIControl : \"aeColor\"; displayName : \"Tint\"; >;"
                 "parameter int mode < aeUIControl : \"aePopup\"; enumValues : \"low|7|high\"; >;"
                 "parameter bool2 on; parameter float2x2 m; parameter int count < maxValue : 9; >;"
                 "parameter float turn < aeUIControl : \"aeAngle\"; >;"));
  writePicture("in.png");
  const Outcome outcome =
      run("render k.pbk -i in.png -o out.exr --depth 32 --sample-type float -p 'Amount = x=0.9' -p "
          "place=25,50 -p 'Tint=#00008040' "
          "-p mode=high -p 'on y=true' -p m=0,0,0.25,0 -p turn=90");
  ASSERT_EQ(outcome.status, 0) << outcome.error;
  const ImageFile image = readImageFile(file("out.exr"));
  expectPixel(image.pixels, 4, 3, {0.09, 0.25, 128.0 / 255, 0.5}, 1e-4);

  const struct {
    const char *setting, *expected;
  } kRefused[] = {
      {"nothing=1",
       "the controls are \"on x\", \"on y\", \"mode\", \"count\", \"Amount = x\", \"m [0][0]\""},
      {"amount=32768", "a number from -32767 to 32767"},
      {"amount=many", "a number"},
      {"amount=", "a number"},
      {"count=1.5", "a whole number"},
      {"place=5", "x,y"},
      {"place=1,4e4", "but y is 40000"},
      {"Tint=#12345", "#rrggbb"},
      {"Tint=0,2,0", "from 0 to 1, but green is 2"},
      {"m=1,2,4e4,0", "\"m [1][0]\": expected a number from -32767 to 32767"},
      {"mode=4", "one of low, 7, high or its number"},
      {"on x=perhaps", "true or false"},
      {"m=1,2", "4 values"},
      {"turn", "NAME=VALUE"},
  };
  for (const auto& [setting, expected] : kRefused) {
    const std::string message = refusal("k.pbk -i in.png -p '" + std::string(setting) + "'", 2);
    EXPECT_NE(message.find(expected), std::string::npos) << message;
  }
}

// What the panel takes is taken: there a range only narrows a slider, and an empty one does
// nothing.
TEST_F(Render, ARangeOfTheProgramIsNoLimit) {
  writeText("k.pbk", kernelText("dst = float4(a, b / 10000.0, float(c) / 100.0);",
                                "parameter float2 a < maxValue : float2(0.5); >;"
                                "parameter float b < minValue : 0.0; maxValue : 0.0; >;"
                                "parameter int c < minValue : 9; maxValue : 1; >;"));
  writePicture("in.png");
  const struct {
    const char *setting, *note;
  } kCases[] = {
      {"a=0.5,2", "vellumtide: -p a=0.5,2: note: \"a y\" is outside the program's range to 0.5\n"},
      {"a=0.5,0.5", ""},
      {"b=7500", ""},
      {"c=-25", ""},
  };
  std::string all;
  for (const auto& [setting, note] : kCases) {
    all += " -p " + std::string(setting);
    const Outcome outcome = run("render k.pbk -i in.png -o out.exr -p " + std::string(setting));
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_EQ(outcome.error, note);
  }
  EXPECT_EQ(run("render k.pbk -i in.png -o out.exr --depth 32" + all).status, 0);
  expectPixel(readImageFile(file("out.exr")).pixels, 4, 3, {0.5, 0.5, 0.75, -0.25}, 1e-3);
}

TEST_F(Render, LayersOfTwoInputsAndReducedResolution) {
  writeText("two.pbk",
            "kernel Two <> { input image4 a; input image4 b; output pixel4 d;"
            " void evaluatePixel() { d = float4(sampleNearest(a, outCoord()).r, sampleNearest(b, "
            "outCoord()).r,"
            " outCoord().x / 100.0, 1.0); } }");
  World red(4, 4, PF_PixelFormat_ARGB128), other(4, 4, PF_PixelFormat_ARGB128);
  for (int i = 0; i < 16; ++i) {
    red.setPixel(i % 4, i / 4, i % 2, 0, 0, 1);
    other.setPixel(i % 4, i / 4, 0.5, 0, 0, 1);
  }
  writeImageFile(file("a.exr"), red, 1, {});
  writeImageFile(file("b.exr"), other, 1, {});
  ASSERT_EQ(run("render two.pbk -i a.exr -i b.exr -o both.exr").status, 0);
  expectPixel(readImageFile(file("both.exr")).pixels, 1, 0, {1, 0.5, 0.015, 1}, 1e-6);
  ASSERT_EQ(run("render two.pbk -i a.exr -o one.exr").status, 0);
  expectPixel(readImageFile(file("one.exr")).pixels, 1, 0, {1, 0, 0.015, 1}, 1e-6);
  ASSERT_EQ(run("render two.pbk -i a.exr -i b.exr -o half.exr --downsample 2").status, 0);
  const World half = readImageFile(file("half.exr")).pixels;
  ASSERT_EQ(half.width(), 2);
  expectPixel(half, 1, 1, {0.5, 0.5, 0.03, 1}, 1e-6);  // the mean of 0 and 1; coordinates stay full
  EXPECT_NE(refusal("two.pbk -i a.exr -i b.exr -i a.exr", 2).find("takes 2 images, not 3"),
            std::string::npos);
}

// Every kind of bad input, as a user meets it: its status, a message, no output.
TEST_F(Render, BadInput) {
  writePicture("in.png");
  writeText("empty.png", "");
  std::string many, inputs;
  for (int i = 0; i < 200; ++i)
    many += "parameter float p" + std::to_string(i) + ";";
  for (int i = 0; i < 9; ++i)
    inputs += "input image4 i" + std::to_string(i) + ";";
  const std::string body = "void evaluatePixel() { d = float4(1.0); } }";
  const struct {
    const char* name;
    std::string text;
    int status;
    const char* message;
  } kPrograms[] = {
      {"fails", kernelText("dst = missing(src);"), 3, "missing"},
      {"unlinked", kernelText("dst = f();", "float4 f();"), 3, "error: unresolved"},
      {"comment", "kernel Open <> { input image4 s; /* output pixel4 d; " + body, 3, "error: "},
      {"string",
       "kernel Open < description : \"never closed; > { input image4 s; output pixel4 d; " + body,
       3, "error: "},
      {"braces", "kernel Open <> { input image4 s; output pixel4 d; {{{ " + body, 3,
       "braces.pbk:1:51: error: "},
      {"types", "kernel Odd <> { input picture s; output colour d; " + body, 3, "error: "},
      {"nine", "kernel Nine <> { " + inputs + " output pixel4 d; " + body, 3, "error: "},
      {"nooutput", "kernel None <> { input image4 s; void evaluatePixel() {} }", 3, "error: "},
      {"noinput", "kernel None <> { output pixel4 d; " + body, 0, ""},
      {"many", "kernel Many <> { input image4 s; output pixel4 d; " + many + body, 0, ""},
  };
  for (const auto& [name, text, status, message] : kPrograms) {
    const std::string program = std::string(name) + ".pbk";
    writeText(program, text);
    if (status == 0) {
      EXPECT_EQ(run("render " + program + " -i in.png -o ok.png").status, 0) << name;
      continue;
    }
    const std::string error = refusal(program + " -i in.png", status);
    EXPECT_NE(error.find(message), std::string::npos) << error;
    EXPECT_NE(error.find("vellumtide: " + program), std::string::npos) << error;
  }

  writeText("k.pbk", kernelText("dst = sampleNearest(src, outCoord());"));
  writeText(
      "cycle.pbg",
      "<graph name='Round'><kernel>kernel K &lt;&gt; { input image4 s; output pixel4 d; void "
      "evaluatePixel() { d = sample(s, outCoord()); } }</kernel><node id='a' name='K'/><connect "
      "fromNode='a' toNode='a' toInput='s'/><connect fromNode='a' toImage='o'/></graph>");
  expectEndings("render -o refused.png ",
                {
                    {"cycle.pbg -i in.png", 3, "Cyclick"},
                    {"missing.pbk -i in.png", 3, "there is no such file"},
                    {"k.pbk -i missing.png", 4, "missing.png: there is no such file"},
                    {"k.pbk -i empty.png", 4, "empty.png"},
                    {"k.pbk", 2, "-i"},
                    {"k.pbk --size 0x5", 2, "--size"},
                    {"k.pbk --size 30001x2", 2, "--size"},
                    {"k.pbk --size 16x16 -i in.png", 2, "--size"},
                    {"k.pbk -i in.png --depth 10", 2, "--depth"},
                    {"k.pbk -i in.png --downsample 0", 2, "--downsample"},
                    {"k.pbk -i in.png --fps 0", 2, "--fps"},
                    {"k.pbk -i in.png --module missing.so", 1, "missing.so"},
                    {"k.pbk -i in.png --sample-type half", 4, "PNG files hold"},
                });
  EXPECT_EQ(filesLike("refused"), "");
  EXPECT_NE(refusal("k.pbk -i in.png", 5, "__EGL_VENDOR_LIBRARY_DIRS=/nowhere")
                .find("no usable GL device"),
            std::string::npos);
  EXPECT_EQ(run("render k.pbk -i in.png -o /dev/null/x.png").status, 4);
  EXPECT_EQ(run("render k.pbk -i in.png -o nowhere/x.png").status, 4);
}

TEST_F(Render, EveryExampleRenders) {
  writePicture("in.png");
  for (const auto& [folder, least] : {std::pair("/kernels", 8), {"/graphs", 4}}) {
    int count = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(VELLUMTIDE_EXAMPLES + std::string(folder))) {
      const Outcome outcome = run("render " + entry.path().string() + " -i in.png -o out.png");
      EXPECT_EQ(outcome.status, 0) << outcome.error;
      ++count;
    }
    EXPECT_GE(count, least);
  }
}

}  // namespace
}  // namespace vellumtide::cli
