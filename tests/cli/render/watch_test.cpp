#include <signal.h>

#include <chrono>
#include <thread>

#include "cli/files/file_watch.h"
#include "cli/program/program_changes.h"
#include "tests/support/command_line.h"

namespace vellumtide::cli {
namespace {

class Watching : public CommandLine {
 protected:
  ~Watching() override {
    if (job_ > 0) end(SIGKILL);
  }
  void startWatch(const std::string& arguments) { job_ = start(arguments + " --watch"); }
  int end(int signal) {
    kill(job_, signal);
    return wait(std::exchange(job_, 0));
  }
  // Waits until standard error holds the text so often, twenty seconds at most.
  void await(const std::string& text, int times = 1) const {
    int found = 0;
    for (int i = 0; i < 1000; ++i) {
      const std::string error = readText(".stderr");
      found = 0;
      for (std::size_t at = 0; (at = error.find(text, at)) != std::string::npos; ++at)
        ++found;
      if (found >= times) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    ASSERT_EQ(found, times) << text << "\n" << readText(".stderr");
  }
  // As editors save: a new file takes the name.
  void replace(const std::string& name, const std::function<void(const std::string&)>& write) {
    write("new." + name);
    std::filesystem::rename(file("new." + name), file(name));
  }
  void writeGrey(const std::string& name, double level) {
    headless::World world(2, 2, PF_PixelFormat_ARGB128);
    for (int i = 0; i < 4; ++i)
      world.setPixel(i % 2, i / 2, level, level, level, 1);
    writeImageFile(file(name), world, 1, {});
  }
  double outcome() { return readImageFile(file("out.exr")).pixels.pixel(1, 1)[0]; }

  pid_t job_ = 0;
};

std::string scaling(const std::string& factor, const std::string& parameter) {
  return kernelText(
      "dst = float4(sampleNearest(src, outCoord()).rgb * " + factor + " + lift, 1.0);",
      "parameter float lift; " + parameter);
}

TEST_F(Watching, EachChangeIsRenderedAndTheLastGoodPictureStays) {
  writeText("k.pbk", scaling("amount", "parameter float amount;"));
  writeText("keys.json", R"({"lift": 0.5})");
  writeGrey("in.exr", 1);
  startWatch("k.pbk -i in.exr -o out.exr -p amount=0.25 --animation keys.json");
  await("rendered out.exr (", 1);
  EXPECT_EQ(outcome(), 0.75);

  writeText("k.pbk", scaling("nothing", "parameter float amount;"));
  await("the shaders do not build");
  EXPECT_EQ(outcome(), 0.75);
  replace("k.pbk", [&](const std::string& name) {
    writeText(name, scaling("level", "parameter float level < defaultValue : 2.0; >;"));
  });
  await("rendered out.exr (", 2);
  await("parameter \"amount\" is gone");
  await("parameter \"level\" is new: type float, control fixed, default 2");
  await(
      "-p amount=0.25: there is no control \"amount\"; the controls are \"lift\", \"level\"; left "
      "out");
  EXPECT_EQ(outcome(), 2.5);

  replace("in.exr", [&](const std::string& name) { writeGrey(name, 0.5); });
  await("rendered out.exr (", 3);
  EXPECT_EQ(outcome(), 1.5);
  replace("keys.json", [&](const std::string& name) { writeText(name, R"({"lift": 0.25})"); });
  await("rendered out.exr (", 4);
  EXPECT_EQ(outcome(), 1.25);
  std::filesystem::rename(file("in.exr"), file("away.exr"));
  await("in.exr: there is no such file");
  std::filesystem::rename(file("away.exr"), file("in.exr"));
  await("rendered out.exr (", 5);

  EXPECT_EQ(end(SIGTERM), 128 + SIGTERM);
  EXPECT_EQ(readText(".stdout"), "");
  EXPECT_EQ(filesLike("out"), "out.exr ");
  EXPECT_TRUE(std::filesystem::is_empty(file("tmp")));
}

TEST_F(Watching, NewFramesJoinASequenceAndMistakesEndAtOnce) {
  writeText("k.pbk", scaling("1.0", ""));
  writeGrey("in.1.exr", 1);
  startWatch("k.pbk -i in.#.exr -o out.#.exr");
  await("rendered out.#.exr (", 1);
  replace("in.2.exr", [&](const std::string& name) { writeGrey(name, 0.5); });
  await("rendered out.#.exr (", 2);
  EXPECT_EQ(filesLike("out"), "out.1.exr out.2.exr ");
  EXPECT_EQ(end(SIGINT), 128 + SIGINT);
  for (const char* arguments :
       {"-o out.exr -p none=1", "-o in.1.exr", "-o x.exr --skip-existing"}) {
    EXPECT_EQ(run("render k.pbk --watch -i in.1.exr " + std::string(arguments)).status, 2);
  }
}

TEST_F(Watching, FilesCountWhenTheyHaveBeenLeftAlone) {
  FileWatch watch;
  writeText("f", "1");
  watch.watch({file("f"), file("late")});
  const auto looks = [&](int count) {
    int changes = 0;
    while (count-- > 0)
      changes += watch.look();
    return changes;
  };
  EXPECT_EQ(looks(20), 0);
  for (const char* text : {"12", "123", "1234"}) {
    writeText("f", text);
    EXPECT_EQ(looks(1), 0) << "still being written";
  }
  EXPECT_EQ(looks(20), 1);
  writeText("g", "4321");
  const auto time = std::filesystem::last_write_time(file("f"));
  std::filesystem::remove(file("f"));
  EXPECT_EQ(looks(5), 0) << "away for a moment";
  std::filesystem::rename(file("g"), file("f"));
  std::filesystem::last_write_time(file("f"), time);
  EXPECT_EQ(looks(20), 1) << "another file of the same size and time";
  std::filesystem::remove(file("f"));
  EXPECT_EQ(looks(20), 1);
  writeText("late", "");
  writeText("later", "");
  watch.expect({file("late"), file("later")});
  EXPECT_EQ(looks(20), 1);
}

TEST_F(Watching, ChangesOfPrograms) {
  writeText(
      "a.pbk",
      "kernel A < version : 1; > { input image4 a; input image4 b; output pixel4 d; parameter "
      "float x < minValue : 0.0; >; parameter int y; parameter float z; }");
  writeText(
      "b.pbk",
      "kernel B < version : 2; > { input image3 a; output pixel4 d; parameter float2 x < "
      "minValue : float2(-1.0, -1.0); displayName : \"The x\"; >; parameter int y < aeUIControl : "
      "\"aePopup\"; enumValues : \"low|high\"; defaultValue : 1; >; parameter bool n; }");
  const Program a = readProgram(file("a.pbk")), b = readProgram(file("b.pbk"));
  EXPECT_EQ(programChanges(a, a), std::vector<std::string>{});
  EXPECT_EQ(programChanges(a, b),
            (std::vector<std::string>{
                "program: name \"A\" -> \"B\", version 1 -> 2", "input 1: type image4 -> image3",
                "input 2 is gone: name \"b\", type image4", "parameter \"z\" is gone",
                "parameter \"x\": type float -> float2, label - -> \"The x\", from 0 -> -1 each",
                "parameter \"y\": control slider -> pop-up, default - -> high, entries - -> "
                "\"low|high\"",
                "parameter \"n\" is new: type bool, control check box"}));
}

}  // namespace
}  // namespace vellumtide::cli
