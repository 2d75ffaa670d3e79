// Places in a source file as people count them, and how they are shown.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vellumtide::cli {

// Line and column from 1. Lines end as in an editor, at CR LF, LF or CR; a column is one character,
// a byte that is no UTF-8 counts as one, a byte-order mark at the begin as none.
struct SourcePlace {
  std::size_t line = 1;
  std::size_t column = 1;
};

class SourceLines {
 public:
  // The text has to outlive this.
  explicit SourceLines(std::string_view text);

  SourcePlace placeOf(std::size_t offset) const;

  // The line of a byte, moved in by two blanks, and a caret below the byte's character; both end
  // with a line feed. Tabs stay, other control characters are replaced, a long line is cut around
  // the caret.
  std::string excerpt(std::size_t offset) const;

 private:
  std::string_view lineAt(std::size_t offset, std::size_t& begin) const;
  std::size_t lineIndex(std::size_t offset) const;

  std::string_view text_;
  std::vector<std::size_t> begins_;
};

// A text for a terminal: control characters, those that turn the direction of writing and bytes
// that are no UTF-8 are replaced; a tab or line end becomes a blank.
std::string harmless(std::string_view text);

}  // namespace vellumtide::cli
