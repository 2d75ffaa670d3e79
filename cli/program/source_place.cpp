#include "cli/program/source_place.h"

#include <algorithm>

#include "headless/utf8.h"

namespace vellumtide::cli {
namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
// Columns of a line that are shown, most of them in front of the caret.
constexpr std::size_t kWidth = 110;
constexpr std::size_t kLead = 70;

struct Character {
  std::string_view bytes;
  char32_t code;  // U+FFFD as it stands for bytes that are no UTF-8
};

// The character that `text` begins with; `text` is not empty.
Character firstCharacter(std::string_view text) {
  std::string_view rest = text;
  const char32_t code = headless::takeCharacter(rest);
  return {text.substr(0, text.size() - rest.size()), code};
}

struct Range {
  char32_t first, last;
};

template <std::size_t N>
bool isIn(const Range (&ranges)[N], char32_t code) {
  return std::any_of(std::begin(ranges), std::end(ranges), [code](const Range& range) {
    return code >= range.first && code <= range.last;
  });
}

bool isHarmful(char32_t code) {
  constexpr Range kRanges[] = {{0, 0x1F},         {0x7F, 0x9F},     {0x200B, 0x200F},
                               {0x2028, 0x202E},  {0x2060, 0x206F}, {0xFEFF, 0xFEFF},
                               {0xE0000, 0xE007F}};
  return isIn(kRanges, code);
}

// Columns that a terminal gives a character: the usual wide blocks and combining marks.
std::size_t widthOf(char32_t code) {
  constexpr Range kNoColumn[] = {
      {0x300, 0x36F}, {0x1AB0, 0x1AFF}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}};
  constexpr Range kWide[] = {{0x1100, 0x115F},  {0x2E80, 0xA4CF},   {0xAC00, 0xD7A3},
                             {0xF900, 0xFAFF},  {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
                             {0xFFE0, 0xFFE6},  {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF},
                             {0x20000, 0x3FFFD}};
  if (isIn(kNoColumn, code)) return 0;
  return isIn(kWide, code) ? 2 : 1;
}

}  // namespace

SourceLines::SourceLines(std::string_view text) : text_(text) {
  begins_.push_back(text.starts_with(kMark) ? kMark.size() : 0);
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool isPair = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
    if ((text[at] == '\n' || text[at] == '\r') && !isPair) begins_.push_back(at + 1);
  }
}

std::size_t SourceLines::lineIndex(std::size_t offset) const {
  const auto behind = std::upper_bound(begins_.begin() + 1, begins_.end(), offset);
  return static_cast<std::size_t>(behind - begins_.begin()) - 1;
}

std::string_view SourceLines::lineAt(std::size_t offset, std::size_t& begin) const {
  begin = begins_[lineIndex(offset)];
  return text_.substr(begin, std::min(text_.find_first_of("\r\n", begin), text_.size()) - begin);
}

SourcePlace SourceLines::placeOf(std::size_t offset) const {
  SourcePlace place{lineIndex(offset) + 1, 1};
  std::size_t begin = 0;
  std::string_view line = lineAt(offset, begin);
  while (!line.empty() && begin < offset) {
    const std::size_t size = firstCharacter(line).bytes.size();
    begin += size;
    if (begin > offset) break;
    line.remove_prefix(size);
    ++place.column;
  }
  return place;
}

std::string SourceLines::excerpt(std::size_t offset) const {
  std::size_t begin = 0;
  std::string_view line = lineAt(offset, begin);
  const std::size_t column = placeOf(offset).column - 1;
  const std::size_t first = column > kLead && line.size() > kWidth ? column - kLead : 0;
  std::string shown = first > 0 ? "..." : "", below = first > 0 ? "   " : "";
  for (std::size_t i = 0; !line.empty(); ++i) {
    if (i >= first + kWidth) {
      shown += "...";
      break;
    }
    const Character character = firstCharacter(line);
    line.remove_prefix(character.bytes.size());
    if (i < first) continue;
    const bool isTab = character.code == '\t';
    const bool isShown =
        isTab || (!isHarmful(character.code) && character.code != headless::kReplacementCharacter);
    shown += isShown ? character.bytes : kReplacement;
    if (i < column) {
      below += isTab ? "\t" : std::string(isShown ? widthOf(character.code) : 1, ' ');
    }
  }
  return "  " + shown + "\n  " + below + "^\n";
}

std::string harmless(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const Character character = firstCharacter(text);
    text.remove_prefix(character.bytes.size());
    const bool isBlank = character.code == '\t' || character.code == '\n' || character.code == '\r';
    if (isBlank) {
      result += ' ';
    } else if (isHarmful(character.code) || character.code == headless::kReplacementCharacter) {
      result += kReplacement;
    } else {
      result += character.bytes;
    }
  }
  return result;
}

}  // namespace vellumtide::cli
