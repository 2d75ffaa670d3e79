#include "cli/build_errors/shader_lines.h"

#include <algorithm>
#include <string>
#include <vector>

#include "cli/build_errors/macro_expansion.h"

namespace vellumtide::cli {
namespace {

// Longer lines, and calls over more lines, are not followed: a hostile text could take forever.
constexpr std::size_t kLineLimit = std::size_t{1} << 20;
constexpr int kCallLimit = 100;

bool isLineEnd(char c) {
  return c == '\n' || c == '\r';
}

std::size_t lineEnd(std::string_view text, std::size_t at) {
  return std::min(text.find_first_of("\r\n", at), text.size());
}

// Behind the line end at `at`; a pair counts as one.
std::size_t behindLineEnd(std::string_view text, std::size_t at) {
  if (at >= text.size()) return text.size();
  const bool isPair = at + 1 < text.size() && isLineEnd(text[at + 1]) && text[at + 1] != text[at];
  return at + (isPair ? 2 : 1);
}

// Lines joined by backslashes, as one, with where its parts come from.
struct JoinedLine {
  std::string text;
  struct Part {
    std::size_t joined, source;
  };
  std::vector<Part> parts;
  std::size_t next = 0;  // where the following line begins
  int lines = 0;         // of the source

  std::size_t sourceOf(std::size_t at) const {
    const auto behind =
        std::upper_bound(parts.begin(), parts.end(), at,
                         [](std::size_t place, const Part& part) { return place < part.joined; });
    const Part& part = *(behind - 1);
    return part.source + (at - part.joined);
  }
};

JoinedLine joinLine(std::string_view text, std::size_t begin) {
  JoinedLine line;
  for (bool isOpen = true; isOpen;) {
    const std::size_t end = lineEnd(text, begin);
    isOpen = end > begin && text[end - 1] == '\\' && end < text.size();
    line.parts.push_back({line.text.size(), begin});
    line.text.append(text.substr(begin, end - begin - (isOpen ? 1 : 0)));
    begin = behindLineEnd(text, end);
    ++line.lines;
  }
  line.next = begin;
  return line;
}

void appendTokens(MacroTokens& tokens, const JoinedLine& line) {
  const std::size_t first = tokens.size();
  appendTokens(tokens, line.text);
  for (std::size_t i = first; i < tokens.size(); ++i)
    tokens[i].place = line.sourceOf(tokens[i].place);
}

}  // namespace

std::optional<TextSpan> shaderLine(std::string_view text, int line) {
  std::size_t begin = 0;
  for (int i = 1; begin <= text.size(); ++i) {
    const std::size_t end = lineEnd(text, begin);
    if (i == line) return TextSpan{begin, end};
    if (end == text.size()) break;
    begin = behindLineEnd(text, end);
  }
  return std::nullopt;
}

bool setsItsLines(std::string_view text) {
  for (std::size_t at = text.find("line"); at != text.npos; at = text.find("line", at + 1)) {
    std::size_t before = at;
    while (before > 0 && (text[before - 1] == ' ' || text[before - 1] == '\t'))
      --before;
    if (before > 0 && text[before - 1] == '#') return true;
  }
  return false;
}

std::optional<std::size_t> findAfterPreprocessing(std::string_view text, int line, int column) {
  Macros macros;
  int counted = 1;
  for (std::size_t at = 0; at < text.size() && counted <= line;) {
    JoinedLine joined = joinLine(text, at);
    int lines = joined.lines;
    if (macros.takeDirective(joined.text)) {
      if (line < counted + lines) return std::nullopt;
    } else if (macros.isActive() && (line < counted + lines || macros.hasCalls())) {
      if (joined.text.size() > kLineLimit) return std::nullopt;
      MacroTokens tokens;
      appendTokens(tokens, joined);
      for (int more = 0; joined.next < text.size() && macros.leavesCallOpen(tokens); ++more) {
        joined = joinLine(text, joined.next);
        if (more == kCallLimit || joined.text.size() > kLineLimit) return std::nullopt;
        tokens.push_back({" ", joined.parts.front().source});
        appendTokens(tokens, joined);
      }
      if (line < counted + lines) return macros.placeOf(tokens, line, column);
    }
    counted += lines;
    at = joined.next;
  }
  return std::nullopt;
}

}  // namespace vellumtide::cli
