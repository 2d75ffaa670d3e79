// Sequences, as a render farm runs them: what is absent, what fails, what is there already, what
// ends a job early.
#include <nlohmann/json.hpp>

#include "tests/support/command_line.h"

namespace vellumtide::cli {
namespace {

using Json = nlohmann::json;

class Sequence : public CommandLine {
 protected:
  // A kernel that shows its picture, and 4 x 4 pictures whose red is number / 100.
  void prepare(std::initializer_list<int> numbers) {
    writeText("k.pbk", kernelText("dst = sampleNearest(src, outCoord());"));
    for (int number : numbers)
      writePicture("in.0" + std::to_string(number) + ".png", number / 100.0);
  }
  void writePicture(const std::string& name, double red) {
    headless::World world(4, 4, PF_PixelFormat_ARGB32);
    for (int i = 0; i < 16; ++i)
      world.setPixel(i % 4, i / 4, red, 0.5, 0, 1);
    writeImageFile(file(name), world, 1, {});
  }
  double red(const std::string& name) const {
    return readImageFile(file(name)).pixels.pixel(1, 1)[0];
  }
  void expectRed(const std::string& name, double expected) const {
    EXPECT_NEAR(red(name), expected, 0.003) << name;
  }
  // The status of each frame of a report, in order.
  std::string statuses(const std::string& report) const {
    std::string text;
    const Json parsed = Json::parse(readText(report));
    for (const Json& frame : parsed["frames"])
      text += (text.empty() ? "" : " ") + frame["status"].get<std::string>();
    return text;
  }
};

TEST_F(Sequence, AFailedFrameEndsTheJobUnlessItKeepsGoing) {
  prepare({1, 2, 4});
  const Outcome stopped = run("render k.pbk -i in.%02d.png -o a.@@@.png --frames 1-4 --report a");
  EXPECT_EQ(stopped.status, 4);
  EXPECT_NE(stopped.error.find("vellumtide: frame 3: in.03.png: there is no such file"),
            std::string::npos);
  EXPECT_EQ(filesLike("a."), "a.001.png a.002.png ");
  EXPECT_EQ(statuses("a"), "done done failed waiting");

  const Outcome going =
      run("render k.pbk -i in.##.png -o b.%d.png --frames 4-1 --keep-going --report b");
  EXPECT_EQ(going.status, 1);
  EXPECT_NE(going.error.find("vellumtide: frame 3: in.03.png"), std::string::npos);
  EXPECT_NE(going.error.find("vellumtide: 1 of 4 frames failed: 3\n"), std::string::npos);
  for (int number : {1, 2, 4})
    expectRed("b." + std::to_string(number) + ".png", number / 100.0);
  EXPECT_EQ(statuses("b"), "done failed done done");

  // Without a list, the frames are those on disk.
  EXPECT_EQ(run("render k.pbk -i in.##.png -o c.##.png").status, 0);
  EXPECT_EQ(filesLike("c."), "c.01.png c.02.png c.04.png ");
}

TEST_F(Sequence, AbsentFramesAreHeldOrBlack) {
  prepare({2, 4});
  ASSERT_EQ(run("render k.pbk -i in.##.png -o h.#.png --frames 1-5 --missing hold").status, 0);
  for (const auto& [number, shown] : {std::pair(1, 2), {2, 2}, {3, 2}, {4, 4}, {5, 4}})
    expectRed("h." + std::to_string(number) + ".png", shown / 100.0);
  ASSERT_EQ(run("render k.pbk -i in.##.png -o b.#.png --frames 3-4 --missing black").status, 0);
  expectPixel(readImageFile(file("b.3.png")).pixels, 3, 3, {0, 0, 0, 0}, 0);
  expectRed("b.4.png", 0.04);
  // A file that is there but broken is never replaced; neither is a sequence without any file.
  writeText("in.05.png", "no image");
  EXPECT_EQ(run("render k.pbk -i in.##.png -o x.#.png --frames 5 --missing hold").status, 4);
  EXPECT_EQ(run("render k.pbk -i no.##.png -o x.#.png --frames 5 --missing black").status, 4);
}

TEST_F(Sequence, WhatIsThereIsTrustedOnlyWhenItCanBeRead) {
  prepare({1, 2, 3, 4, 5});
  for (const std::string extension : {"png", "tif", "exr"}) {
    const std::string render =
        "render k.pbk -i in.##.png -o o.#." + extension + " --skip-existing --report r";
    ASSERT_EQ(run(render).status, 0);
    const std::string whole = readText("o.2." + extension);
    for (std::size_t cut = 0; cut < whole.size() - 12; cut += 1 + whole.size() / 5) {
      writeText("o.2." + extension, whole.substr(0, cut));  // another program's half a file
      ASSERT_EQ(run(render).status, 0);
      EXPECT_EQ(statuses("r"), "skipped done skipped skipped skipped") << extension << " " << cut;
      EXPECT_TRUE(readText("o.2." + extension) == whole) << extension << " " << cut;
    }
    writePicture("small.png", 0.1);
    ASSERT_EQ(run("render k.pbk -i small.png --downsample 2 -o o.3." + extension).status, 0);
    ASSERT_EQ(run(render).status, 0);
    EXPECT_EQ(statuses("r"), "skipped skipped done skipped skipped") << "of another size";
  }
}

TEST_F(Sequence, ProgressForSchedulersGoesToStandardOutput) {
  prepare({1, 3});
  const Outcome json =
      run("render k.pbk -i in.##.png -o a.#.png --frames 1-3 --keep-going --progress json");
  EXPECT_EQ(json.status, 1);
  std::istringstream lines(json.out);
  std::vector<Json> events;
  for (std::string line; std::getline(lines, line);)
    events.push_back(Json::parse(line));
  ASSERT_EQ(events.size(), 5u);
  for (std::size_t i = 1; i <= 3; ++i)
    EXPECT_EQ(events[i]["done"], i);
  EXPECT_EQ(events[4]["event"], "end");
  EXPECT_EQ(events[4]["exitStatus"], 1);

  // Neither a message nor a name can pass for a line of the scheduler's.
  writeText("bad.pbk", kernelText("dst = float4(1.0);\n#error openjd_fail: x\nopenjd_progress: 9"));
  const std::string name = "$'o\nopenjd_status: no.#.png'";
  const Outcome openjd = run("render k.pbk -i in.##.png -o " + name + " --progress openjd");
  EXPECT_EQ(openjd.out,
            "openjd_status: Rendering 2 frames\nopenjd_progress: 50.00\n"
            "openjd_progress: 100.00\nopenjd_status: Done\n");
  for (const std::string arguments : {"bad.pbk -i in.##.png -o b.#.png",
                                      "k.pbk -i in.##.png -o b.png", "k.pbk -i no.png -o b.png"}) {
    const Outcome failed = run("render " + arguments + " --progress openjd");
    EXPECT_NE(failed.status, 0);
    EXPECT_NE(failed.out.find("\nopenjd_fail: "), std::string::npos) << failed.out;
    const std::string all = "\n" + failed.out + "\n" + failed.error;
    EXPECT_EQ(all.find("\nopenjd_progress: 9"), std::string::npos) << all;
    EXPECT_EQ(all.find("\nopenjd_fail: x"), std::string::npos) << all;
  }
}

TEST_F(Sequence, NamesThatDoNotFit) {
  prepare({1, 2});
  expectEndings(
      "render k.pbk ",
      {
          {"-i in.##.png -o out.png", 2, "####"},
          {"-i in.01.png -o out.#.png", 2, "--frames"},
          {"-i in.##.png -o ./in.##.png", 2, "would overwrite the input"},
          {"-i no.##.png -o out.#.png", 4, "no frame of this sequence"},
          {"-i in.##.png -o out.#.png --frames 1-", 2, "--frames"},
          {"-i in.##.png -o out.#.png --report nowhere/r.json", 1, "--report nowhere/r.json"},
          {"-i in.##.png -o out.#.png --missing guess", 2, "--missing"},
      });
  EXPECT_EQ(filesLike("out"), "");
}

}  // namespace
}  // namespace vellumtide::cli
