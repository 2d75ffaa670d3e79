#include <gtest/gtest.h>

#include "kernel/shader_reader.h"

namespace vellumtide {
namespace {

/// Writes every token as kind, state and text: "30x" is an identifier in code.
class Dump : public ShaderReader::Parser {
 public:
  bool onToken(ShaderReader&, std::size_t, TokenKind kind, LexState state,
               std::string_view token) override {
    if (!output.empty()) output += ' ';
    output += static_cast<char>('0' + static_cast<int>(kind));
    output += static_cast<char>('0' + static_cast<int>(state));
    for (const char c : token) {
      output += c == ' ' ? "_" : c == '\n' ? "\\n" : c == '\r' ? "\\r" : std::string(1, c);
    }
    return false;
  }
};

struct TokenCase {
  const char* text;
  const char* tokens;
  int braces = 0;
  int lines = 0;
};

TEST(ShaderReader, Tokens) {
  const TokenCase cases[] = {
      // Numbers and identifiers.
      {"1.5f 0x1Fu .5 1. 1..2", "201.5f 10_ 200x1Fu 10_ 20.5 10_ 201. 10_ 201. 20.2"},
      {"1e5 1.2.3 0xg 2lL _a1.x",
       "201 30e5 10_ 201.2 20.3 10_ 200x 30g 10_ 202l 30L 10_ 30_a1 40. 30x"},
      {"0X1 5.f", "200 30X1 10_ 205.f"},
      // Operators: two characters only from the list.
      {"++--<<>>&&||+=-=<=>=*=/=", "40++ 40-- 40<< 40>> 40&& 40|| 40+= 40-= 40<= 40>= 40*= 40/="},
      {"==!=&=%=^^~", "40= 40= 40! 40= 40& 40= 40% 40= 40^ 40^ 40~"},
      {"\xc3\xa9\x01", "00\xc3 00\xa9 00\x01"},
      {"a\x03z", "30a"},
      // Depths count in code only.
      {"{(})#{\n{\"{\"'{'/*{*/", "40{ 40( 40} 40) 41# 41{ 10\\n 40{ 45\" 45{ 40\" 44' 44{ 40' 10_",
       1, 1},
      // Comments are one token wherever they may stand, and nothing inside literals.
      {"a/**/b//c\r\nd/*/e*/f", "30a 10_ 30b 10\\n 10\\n 30d 10_ 30f", 0, 2},
      {"\"//\"'/*'", "45\" 45/ 45/ 40\" 44' 44/ 44* 40'"},
      {"/* { \n never closed", "10_", 0, 1},
      // A quote behind an odd number of backslashes neither starts nor ends a literal.
      {R"("\"\\"\"')", R"(45" 45\ 45" 45\ 45\ 40" 40\ 40" 44')"},
      {"\"'\"'\"'", "45\" 45' 40\" 44' 44\" 40'"},
      // A preprocessor line ends at the first line end no backslash stands before.
      {"#\\\na\nb", "41# 41\\ 11\\n 31a 10\\n 30b", 0, 2},
      {"#\\\r\na\r\nb", "41# 41\\ 11\\r 11\\n 31a 10\\r 10\\n 30b", 0, 4},
      {"#\"\na#", "41# 41\" 10\\n 30a 41#", 0, 1},
      {"#/*\n*/a", "41# 10_ 30a", 0, 1},
      {"#/* */a//\\\nb", "41# 11_ 31a 11\\n 31b", 0, 1},
  };
  for (const TokenCase& c : cases) {
    ShaderReader reader(c.text);
    Dump dump;
    reader.run(dump);
    EXPECT_EQ(dump.output, c.tokens) << c.text;
    EXPECT_EQ(reader.braceDepth(), c.braces) << c.text;
    EXPECT_EQ(reader.lineCount(), static_cast<std::size_t>(c.lines)) << c.text;
    EXPECT_TRUE(reader.lexState() == LexState::End) << c.text;
  }
}

struct SearchCase {
  std::string_view (ShaderReader::*search)(std::string_view stop);
  const char* text;
  const char* stop;
  const char* found;
  const char* next;  // the identifier behind, which shows how much was consumed
};

TEST(ShaderReader, SearchesConsumeThroughWhatTheyReturn) {
  const auto identifier = &ShaderReader::nextIdentifier;
  const auto number = &ShaderReader::nextNumber;
  const auto string = &ShaderReader::nextString;
  const SearchCase cases[] = {
      {identifier, " : /* no */ yes no", ";", "yes", "no"},
      {identifier, ";yes", ";", "", "yes"},
      {identifier, ";yes", "", "yes", ""},
      {identifier, ": 1", ";", "", ""},
      {number, "a: \"1.5\" b", ">", "1.5", "b"},
      {number, "a > 2 b", ">", "", "b"},
      {string, R"(: "a \" // b" c)", ";", R"(a \" // b)", "c"},
      {string, ": 'a;\"' c", ";", "a;\"", "c"},
      {string, "x; \"no\"", ";", "", "no"},
      {string, "\"open {", ";", "open {", ""},
      {string, "#\"no\"\n \"yes\" c", ";", "yes", "c"},
  };
  for (const SearchCase& c : cases) {
    ShaderReader reader(c.text);
    EXPECT_EQ((reader.*c.search)(c.stop), c.found) << c.text;
    EXPECT_EQ(reader.nextIdentifier(""), c.next) << c.text;
    EXPECT_EQ(reader.braceDepth(), 0) << c.text;
  }
}

}  // namespace
}  // namespace vellumtide
