#include "core/utf.h"

#include <gtest/gtest.h>

namespace vellumtide {
namespace {

TEST(Utf, EachMaximalPartThatIsNoUtf8BecomesOneReplacement) {
  const std::tuple<std::string_view, std::u16string, std::size_t> cases[] = {
      {"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", u"a\u00E9\u20AC\xD83D\xDE00", 4},
      {"Voil\xE0 un \xE9t\xE9", u"Voil\uFFFD un \uFFFDt\uFFFD", 12},
      {"a\x80\xBF\xFE\xFFz", u"a\uFFFD\uFFFD\uFFFD\uFFFDz", 6},
      {"\xE2\x82", u"\uFFFD", 1},  // ended early by the end of the text, or by another character
      {"\xE2\x82\x41\xF1\x80\x80\xE1", u"\uFFFD\x0041\uFFFD\uFFFD", 4},
      {"\xC0\x80", u"\uFFFD\uFFFD", 2},  // overlong
      {"\xE0\x9F\xBF\xF0\x8F\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD", 7},
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD", 3},  // a surrogate
      {"\xF4\x8F\xBF\xBF\xF4\x90\x80\x80", u"\xDBFF\xDFFF\uFFFD\uFFFD\uFFFD\uFFFD", 5},
      {"\xFC\x80\x80", u"\uFFFD\uFFFD\uFFFD", 3},
  };
  for (const auto& [bytes, units, characters] : cases) {
    EXPECT_EQ(toUtf16(bytes).units, units) << bytes;
    EXPECT_EQ(toUtf16(bytes).characters, characters) << bytes;
  }
  EXPECT_EQ(toUtf16("a\x80\xFE\xE9z\xC0\x80", StrayBytes::Skipped).units, u"a\uFFFDz\uFFFD");
}

TEST(Utf, NarrowsPairsAndReplacesHalves) {
  EXPECT_EQ(toUtf8(u"a\u00E9\u20AC\xD83D\xDE00"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(toUtf8(u"\xD83Dx\xDE00\xD83D"), "\xEF\xBF\xBDx\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
}  // namespace vellumtide
