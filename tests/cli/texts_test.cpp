#include <gtest/gtest.h>

#include "cli/failure.h"
#include "cli/frame_sequence.h"
#include "cli/number_text.h"

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

TEST(Texts, FramesAndTheirNames) {
  EXPECT_EQ(parseFrames("3"), (std::vector<int>{3}));
  EXPECT_EQ(parseFrames("1-9x4,20,7-8"), (std::vector<int>{1, 5, 9, 20, 7, 8}));
  for (const char* bad : {"", "a", "5-1", "1-", "-3", "1-5x0", "1,,2", "0-99999999"}) {
    EXPECT_THROW(parseFrames(bad), Failure) << bad;
  }
  const struct {
    const char *pattern, *name;
  } kNames[] = {{"a/in.%04d.exr", "a/in.0012.exr"},
                {"in%d.png", "in12.png"},
                {"in.####.png", "in.0012.png"},
                {"#.png", "12.png"},
                {"a%04d/in.png", "a%04d/in.png"},
                {"100%.png", "100%.png"},
                {"%3d.png", " 12.png"},
                {"%s%n.png", "%s%n.png"}};
  for (const auto& [pattern, name] : kNames) {
    EXPECT_EQ(frameName(pattern, 12), name);
    EXPECT_EQ(isNumbered(pattern), std::string(pattern) != name);
  }
}

}  // namespace
}  // namespace vellumtide::cli
