#include <gtest/gtest.h>

#include <fstream>

#include "cli/files/scratch_folder.h"
#include "cli/sequence/frame_sequence.h"
#include "cli/text/failure.h"
#include "cli/text/number_text.h"

namespace vellumtide::cli {
namespace {

TEST(Texts, NumbersAndRatios) {
  for (const char* bad : {"", "x", "1x", " 1", "1 ", "0x10", "inf", "nan", "1e400", "--1", "1,5"}) {
    EXPECT_FALSE(parseNumber(bad)) << bad;
  }
  EXPECT_EQ(parseNumber("+2.5"), 2.5);
  EXPECT_EQ(parseNumber("-1e-3"), -0.001);
  EXPECT_EQ(parseNumbers("1,-2,0.5"), (std::vector<double>{1, -2, 0.5}));
  EXPECT_FALSE(parseNumbers("1,,2"));
  EXPECT_FALSE(parseNumbers(""));

  const struct {
    const char* text;
    A_long num;
    A_u_long den;
  } kRatios[] = {{"10/11", 10, 11},     {"30000:1001", 30000, 1001}, {"1", 1, 1},  {"24", 24, 1},
                 {"0.9090909", 10, 11}, {"1.0940", 547, 500},        {"2.0", 2, 1}};
  for (const auto& [text, num, den] : kRatios) {
    const std::optional<PF_RationalScale> ratio = parseRatio(text);
    ASSERT_TRUE(ratio) << text;
    EXPECT_EQ(ratio->num, num) << text;
    EXPECT_EQ(ratio->den, den) << text;
  }
  for (const char* bad : {"0", "-1", "1/0", "0/1", "1.5/2", "1e-9", "1e12", "a/b", "/", "1/"}) {
    EXPECT_FALSE(parseRatio(bad)) << bad;
  }
}

TEST(Texts, Frames) {
  const struct {
    const char* text;
    std::vector<int> frames;
    const char* shortest;
  } kLists[] = {
      {"3", {3}, "3"},
      {"1-9x4,20,7-8", {1, 5, 9, 20, 7, 8}, "1-9x4,20,7,8"},
      {" 1 - 3 ,8 - 10 : 2,\t-2--1", {1, 2, 3, 8, 10, -2, -1}, "1-3,8,10,-2,-1"},
      {"-5--1", {-5, -4, -3, -2, -1}, "-5--1"},
      {"-1-1,1--1", {-1, 0, 1}, "-1-1"},
      {"10-1x3", {10, 7, 4, 1}, "10-1x3"},
      {"10-2x-3,5,5,4", {10, 7, 4, 5}, "10-4x3,5"},
      {"2147483646-2147483647", {2147483646, 2147483647}, "2147483646,2147483647"},
      {"1-4x2,4-7", {1, 3, 4, 5, 6, 7}, "1,3-7"},
  };
  for (const auto& [text, frames, shortest] : kLists) {
    EXPECT_EQ(parseFrames(text), frames) << text;
    EXPECT_EQ(frameListText(frames), shortest);
    EXPECT_EQ(parseFrames(shortest), frames);
  }
  EXPECT_EQ(parseFrames("1-1000000").size(), 1000000u);
  std::vector<int> far = {-2147483647 - 1, 0, 2147483647};
  EXPECT_EQ(parseFrames(frameListText(far)), far);
  const std::string endless(1000000, '1'), commas(1000000, ',');
  for (const std::string& bad :
       {std::string(), std::string("a"), std::string("1-"), std::string("1-5x0"),
        std::string("1-5x-1"), std::string("1-5x"), std::string("1--"), std::string("1,,2"),
        std::string("1-3,8:8"), std::string("1-5xx2"), std::string("0-1000000"),
        std::string("2147483648"), std::string("-2147483648-2147483647"), "1-" + endless, endless,
        commas}) {
    try {
      parseFrames(bad);
      ADD_FAILURE() << bad.substr(0, 40);
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.status, ExitStatus::Usage);
      EXPECT_EQ(std::string(failure.what()).find("--frames " + bad.substr(0, 60)), 0u);
      EXPECT_LT(std::string(failure.what()).size(), 300u);
    }
  }
}

TEST(Texts, NamesOfFrames) {
  const struct {
    const char *pattern, *name, *negative;
  } kNames[] = {{"a/in.%04d.exr", "a/in.0012.exr", "a/in.-003.exr"},
                {"in%d.png", "in12.png", "in-3.png"},
                {"in.####.png", "in.0012.png", "in.-003.png"},
                {"in.@@@.##.png", "in.012.##.png", "in.-03.##.png"},
                {"#.png", "12.png", "-3.png"},
                {"a%04d/in.png", nullptr, nullptr},
                {"100%.png", nullptr, nullptr},
                {"%3d%d.png", " 12%d.png", " -3%d.png"},
                {"%123d%s%n.png%", nullptr, nullptr}};
  for (const auto& [pattern, name, negative] : kNames) {
    EXPECT_EQ(isNumbered(pattern), name != nullptr);
    EXPECT_EQ(frameName(pattern, 12), name ? name : pattern);
    EXPECT_EQ(frameName(pattern, -3), name ? negative : pattern);
  }
}

TEST(Texts, FramesOnDiskAndWhatStandsInForOthers) {
  const ScratchFolder folder;
  const auto path = [&](const std::string& name) { return folder.path() / name; };
  for (const char* name : {"a.0010.x", "a.0003.x", "a.-001.x", "a.12345.x", "a.7.x", "a.00004.x",
                           "a.+005.x", "a. 06.x", "a..x", "a.0008.xx", "b#.x", "b1.x"}) {
    std::ofstream(path(name)) << name;
  }
  std::filesystem::create_directory(path("a.0009.x"));
  EXPECT_EQ(framesOnDisk(path("a.####.x")), (std::vector<int>{-1, 3, 10, 12345}));
  EXPECT_EQ(framesOnDisk(path("a.%d.x")), (std::vector<int>{7, 12345}));
  EXPECT_EQ(framesOnDisk(path("a.%3d.x")), (std::vector<int>{12345}));
  EXPECT_EQ(framesOnDisk(path("nowhere/a.%d.x")), std::vector<int>{});

  const struct {
    const char* pattern;
    Missing missing;
    int frame;
    const char* file;  // null: black
  } kFiles[] = {
      {"a.####.x", Missing::Stop, 5, "a.0005.x"},
      {"a.####.x", Missing::Hold, 5, "a.0003.x"},
      {"a.####.x", Missing::Hold, -7, "a.-001.x"},
      {"a.####.x", Missing::Hold, 99999, "a.12345.x"},
      {"a.####.x", Missing::Hold, 10, "a.0010.x"},
      {"a.####.x", Missing::Black, 5, nullptr},
      {"a.####.x", Missing::Black, 3, "a.0003.x"},
      {"none.####.x", Missing::Black, 3, "none.0003.x"},
      {"none.####.x", Missing::Hold, 3, "none.0003.x"},
      {"b#.x", Missing::Black, 5, "b#.x"},
      {"still.x", Missing::Black, 5, "still.x"},
  };
  for (const auto& [pattern, missing, frame, name] : kFiles) {
    const InputFrames input(path(pattern), missing);
    const std::optional<std::filesystem::path> got = input.file(frame);
    EXPECT_EQ(got.value_or("black"), name ? path(name) : "black") << pattern << " " << frame;
  }
}

}  // namespace
}  // namespace vellumtide::cli
