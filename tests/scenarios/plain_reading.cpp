#include "tests/scenarios/plain_reading.h"

#include <algorithm>
#include <regex>

#include "glsl/prelude.h"

namespace vellumtide::scenarios {
namespace {

// Block comments become a blank, line comments go; quoted text stays.
std::string withoutComments(std::string_view text) {
  static const std::regex comment("(\"[^\"\n]*\")|/\\*[^]*?\\*/|//[^\n]*");
  std::string plain;
  const char* at = text.data();
  const char* const end = at + text.size();
  for (std::cmatch match; std::regex_search(at, end, match, comment); at = match[0].second)
    plain.append(at, match[0].first).append(match[1].matched ? match[0].str() : " ");
  return plain.append(at, end);
}

// Behind the bracket that closes the one at `at`; brackets in quotes do not count.
std::size_t behind(const std::string& text, std::size_t at, char open, char close) {
  int depth = 0;
  bool quoted = false;
  for (; at < text.size(); ++at) {
    if (text[at] == '"') quoted = !quoted;
    if (quoted) continue;
    if (text[at] == open) ++depth;
    if (text[at] == close && --depth == 0) return at + 1;
  }
  return std::string::npos;
}

std::string firstMatch(const std::string& text, const char* pattern) {
  std::smatch match;
  return std::regex_search(text, match, std::regex(pattern)) ? match[1].str() : "";
}

}  // namespace

std::string plainFragment(std::string_view source) {
  const std::string text = withoutComments(source);
  std::smatch kernel;
  if (!std::regex_search(text, kernel, std::regex("(^|\n)\\s*kernel\\s+\\w+\\s*"))) return "";
  // A brace in front of the kernel would be its opening one.
  if (text.find('{') < static_cast<std::size_t>(kernel.position())) return "";
  const auto begin = static_cast<std::size_t>(kernel.position() + kernel.length());
  const std::size_t metadata = text[begin] == '<' ? behind(text, begin, '<', '>') : begin;
  const std::size_t open = metadata == std::string::npos ? metadata : text.find('{', metadata);
  const std::size_t close = open == std::string::npos ? open : behind(text, open, '{', '}');
  if (close == std::string::npos) return "";

  std::string head;
  const std::string before = text.substr(0, begin);
  static const std::regex directive("(^|\n)[ \t]*#[^\n]*");
  for (std::sregex_iterator it(before.begin(), before.end(), directive), end; it != end; ++it)
    head += it->str() + "\n";

  std::string body = text.substr(open + 1, close - open - 2);
  static const std::regex parameter("\\bparameter\\s+\\w+\\s+\\w+\\s*<");
  for (std::smatch match; std::regex_search(body, match, parameter);) {
    const auto at = static_cast<std::size_t>(match.position() + match.length() - 1);
    const std::size_t end = behind(body, at, '<', '>');
    if (end == std::string::npos) return "";
    body.erase(at, end - at);
  }
  // What GLSL does not know is for the driver to take or not.
  const auto isForeign = [](char c) { return static_cast<unsigned char>(c) > 0x7E; };
  if (std::any_of(body.begin(), body.end(), isForeign)) return "";
  const std::string output = firstMatch(body, "\\boutput\\s+\\w+\\s+(\\w+)");
  return "#define parameter uniform\n#define vlmk__INPUT_MAX 8\n"
         "#define vlmk_SWIZZLE_IN .gbar\n" +
         std::string(typePrelude()) + "\n" + std::string(functionPrelude()) + "\n" + head + body +
         "\nvoid main(void) { evaluatePixel(); gl_FragColor = " + output + ".argb; }\n";
}

}  // namespace vellumtide::scenarios
