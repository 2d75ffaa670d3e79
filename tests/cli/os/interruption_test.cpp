// What is left when a sequence is ended from outside: nothing partial, and a way to go on.
#include <signal.h>

#include <chrono>
#include <cstdlib>
#include <random>
#include <set>
#include <thread>

#include "cli/sequence/frame_list.h"
#include "tests/support/command_line.h"

namespace vellumtide::cli {
namespace {

using Clock = std::chrono::steady_clock;
constexpr int kFrames = 12;

class Interrupted : public CommandLine {
 protected:
  void SetUp() override {
    writeText("k.pbk", kernelText("float4 sum = float4(0.0); for (int i = 0; i < 64; ++i) "
                                  "sum += sample(src, outCoord() + float(i)) / 64.0; dst = sum;"));
    headless::World world(160, 120, PF_PixelFormat_ARGB32);
    for (int i = 0; i < 160 * 120; ++i)
      world.setPixel(i % 160, i / 160, (i * 7 % 31) / 30.0, (i * 5 % 17) / 16.0, i / 19200.0, 1);
    writeImageFile(file("in.png"), world, 1, {});
  }

  // Waits for a file, ten seconds at most.
  void await(const std::string& name) const {
    for (int i = 0; i < 1000 && !std::filesystem::exists(file(name)); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  std::string bytes(const std::string& pattern) const {
    std::string all;
    for (int frame = 1; frame <= kFrames; ++frame)
      all += readText(frameName(pattern, frame).string());
    return all;
  }
  static std::filesystem::path frameName(const std::string& pattern, int frame) {
    char name[64];
    std::snprintf(name, sizeof name, pattern.c_str(), frame);
    return name;
  }
};

TEST_F(Interrupted, SignalsEndTheJobSoonCleanlyAndSayHowToGoOn) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const std::string name = "s" + std::to_string(signal);
    const pid_t job = start("k.pbk -i in.png -o " + name + ".%03d.png --frames 1-900 --report " +
                            name + ".json --progress openjd");
    await(name + ".002.png");
    const Clock::time_point sent = Clock::now();
    kill(job, signal);
    EXPECT_EQ(wait(job), 128 + signal);
    EXPECT_LT(Clock::now() - sent, std::chrono::seconds(5));
    const std::string error = readText(".stderr"), report = readText(name + ".json");
    EXPECT_NE(error.find(" of 900 frames are complete"), std::string::npos) << error;
    EXPECT_NE(error.find("--skip-existing, or with --frames "), std::string::npos) << error;
    EXPECT_NE(report.find("\"interrupted\""), std::string::npos) << report;
    EXPECT_NE(readText(".stdout").find("\nopenjd_fail: interrupted"), std::string::npos);
    EXPECT_EQ(filesLike("." + name), "") << "a hidden file is left";
    EXPECT_TRUE(std::filesystem::is_empty(file("tmp")));
    // The list that the message names is what is missing.
    std::set<int> missing;
    for (int frame = 1; frame <= 900; ++frame) {
      if (!std::filesystem::exists(file(frameName(name + ".%03d.png", frame).string())))
        missing.insert(frame);
    }
    const std::string list = error.substr(error.rfind("--frames ") + 9);
    const std::vector<int> named = parseFrames(list.substr(0, list.find('\n')));
    EXPECT_EQ(std::set<int>(named.begin(), named.end()), missing) << list;
  }
}

// A frame that takes longer than anybody waits for. Software rasterisers end a loop after 65,536
// turns, so it is a large one too.
TEST_F(Interrupted, ADriverThatDoesNotLetGoIsLeft) {
  writeText("slow.pbk", kernelText("float4 sum = float4(0.0); for (int i = 0; i < 2000000; ++i) "
                                   "sum += sample(src, outCoord() + float(i)); dst = sum;"));
  const pid_t job = start("slow.pbk --size 1920x1440 -o slow.%d.png --frames 1-3 --progress json");
  for (int i = 0; i < 1000 && readText(".stdout").find("start") == std::string::npos; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  std::this_thread::sleep_for(std::chrono::milliseconds(1000));
  const Clock::time_point sent = Clock::now();
  kill(job, SIGTERM);
  EXPECT_EQ(wait(job), 128 + SIGTERM);
  EXPECT_LT(Clock::now() - sent, std::chrono::seconds(5));
  EXPECT_NE(readText(".stderr").find("0 of 3 frames are complete"), std::string::npos)
      << readText(".stderr");
  EXPECT_EQ(filesLike("slow."), "slow.pbk ");
  EXPECT_TRUE(std::filesystem::is_empty(file("tmp")));
}

// Ended in the middle of frames that chance picks (VELLUMTIDE_KILLS of them), and gone on with.
TEST_F(Interrupted, GoingOnGivesTheBytesOfAnUndisturbedRun) {
  const char* wanted = std::getenv("VELLUMTIDE_KILLS");
  const int kills = wanted ? std::atoi(wanted) : 20;
  const std::string job = "k.pbk -i in.png --frames 1-" + std::to_string(kFrames);
  ASSERT_EQ(wait(start(job + " -o whole.%02d.png")), 0);
  const std::string expected = bytes("whole.%02d.png");

  std::mt19937 random(20261121);
  for (int i = 0; i < kills; ++i) {
    for (int frame = 1; frame <= kFrames; ++frame)
      std::filesystem::remove(file(frameName("o.%02d.png", frame).string()));
    // When the last frame gets its name after TERM, nothing is left to go on with.
    const int signal = i % 2 == 0 ? SIGKILL : SIGTERM;
    const int frame = 1 + static_cast<int>(random() % (kFrames - 3));
    const std::string moment = "TRAP_CALL=" + std::string(random() % 2 == 0 ? "open" : "rename") +
                               " TRAP_NAME=" + frameName("o.%02d.", frame).string();
    SCOPED_TRACE(moment + ", signal " + std::to_string(signal));
    const pid_t child = start(job + " -o o.%02d.png --skip-existing",
                              "ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0:handle_segv=0 "
                              "LD_PRELOAD=" VELLUMTIDE_TRAP " TRAP_PASSES=1 TRAP_SIGNALS=" +
                                  std::to_string(signal) + " " + moment);
    EXPECT_EQ(wait(child), 128 + signal);
    for (int done = 1; done <= kFrames; ++done) {
      const std::string name = frameName("o.%02d.png", done).string();
      if (!std::filesystem::exists(file(name))) continue;
      EXPECT_TRUE(readText(name) == readText(frameName("whole.%02d.png", done).string())) << name;
    }
    ASSERT_EQ(wait(start(job + " -o o.%02d.png --skip-existing")), 0) << readText(".stderr");
    EXPECT_TRUE(bytes("o.%02d.png") == expected);
    EXPECT_EQ(filesLike(".o."), "") << "a hidden file is left";
  }
}

}  // namespace
}  // namespace vellumtide::cli
