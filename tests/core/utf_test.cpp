#include "core/utf.h"

#include <gtest/gtest.h>

namespace vellumtide {
namespace {

TEST(Utf, WidensEveryLengthAndSkipsWhatLeadsNothing) {
  const std::tuple<std::string_view, std::u16string, std::size_t> cases[] = {
      {"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", u"a\u00E9\u20AC\xD83D\xDE00", 4},
      {"a\x80\xBF\xFE\xFFz", u"az", 2},
      {"\xE2\x82", u"\x0082", 1},  // ended early by the end of the text, or by another character
      {"\xE2\x41", u"\x0002\x0041", 2},
      {"\xFC\x80\x80\x80\x80\x81", u"\x0001", 1},
      {"\xFD\xBF\xBF\xBF\xBF\xBF", u"\uFFFD", 1},  // beyond what UTF-16 holds
  };
  for (const auto& [bytes, units, characters] : cases) {
    EXPECT_EQ(toUtf16(bytes).units, units) << bytes;
    EXPECT_EQ(toUtf16(bytes).characters, characters) << bytes;
  }
  EXPECT_EQ(toUtf8(u"a\u00E9\u20AC\xD83D\xDE00"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(toUtf8(u"\xD83Dx\xDE00\xD83D"), "\xEF\xBF\xBDx\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
}  // namespace vellumtide
