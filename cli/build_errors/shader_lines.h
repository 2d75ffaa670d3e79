// Which character of a shader text a driver means by a line and a column.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace vellumtide::cli {

struct TextSpan {
  std::size_t begin = 0;
  std::size_t end = 0;
};

// The line, counted from 1, without its end. As the shading language has it, a line ends at LF or
// CR or a pair of the two in any order. Nothing when there are fewer.
std::optional<TextSpan> shaderLine(std::string_view text, int line);

// Whether the text counts its own lines, with a #line directive.
bool setsItsLines(std::string_view text);

// Mesa counts what its preprocessor leaves: continued lines are joined, blanks between tokens
// become one, macros are replaced and a macro's arguments over several lines make one line, after
// which all lines count less. Follows that up to the given line and says which character stands
// at the column, the macro's name for a character that a macro brought in. Nothing where it cannot
// tell: pasted tokens, macros under conditions that it cannot work out, calls left unfinished.
std::optional<std::size_t> findAfterPreprocessing(std::string_view text, int line, int column);

}  // namespace vellumtide::cli
