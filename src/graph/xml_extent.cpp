#include "graph/xml_extent.h"

#include <algorithm>
#include <cctype>

namespace vellumtide {
namespace {

bool isSpace(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool isNameStart(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 127 || std::isalpha(byte) || c == '_';
}

bool isNameCharacter(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return isNameStart(c) || std::isdigit(byte) || c == '-' || c == '.' || c == ':';
}

/// Bytes that a character takes as told by its first byte alone.
std::size_t characterLength(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte < 0xc2 || byte > 0xf4) return 1;
  if (byte < 0xe0) return 2;
  return byte < 0xf0 ? 3 : 4;
}

/// Walks over a text. Each step returns false where TinyXML gives up; what is behind is never read.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  XmlExtent measure() {
    skipSpace();
    while (!atEnd() && takeNode())
      skipSpace();
    return extent_;
  }

 private:
  bool atEnd() const { return at_ >= text_.size(); }
  char peek(std::size_t ahead = 0) const {
    return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0';
  }
  bool startsWith(std::string_view mark) const { return text_.substr(at_).starts_with(mark); }
  bool startsWithAnyCase(std::string_view lowerCaseMark) const {
    for (std::size_t i = 0; i < lowerCaseMark.size(); ++i) {
      if (std::tolower(static_cast<unsigned char>(peek(i))) != lowerCaseMark[i]) return false;
    }
    return true;
  }
  void advance(std::size_t count) { at_ = std::min(at_ + count, text_.size()); }
  /// Behind the next `mark`, searched `from` places ahead; to the end when there is none.
  void skipBehind(std::string_view mark, std::size_t from) {
    const std::size_t found = text_.find(mark, std::min(at_ + from, text_.size()));
    at_ = found == std::string_view::npos ? text_.size() : found + mark.size();
  }

  /// Byte-order marks and the two non-characters beside them count as blank.
  void skipSpace() {
    while (!atEnd()) {
      if (startsWith("\xef\xbb\xbf") || startsWith("\xef\xbf\xbe") || startsWith("\xef\xbf\xbf")) {
        at_ += 3;
      } else if (isSpace(text_[at_])) {
        ++at_;
      } else {
        return;
      }
    }
  }

  bool takeNode() {
    if (depth_ > 0 && startsWith("</")) {
      skipBehind(">", 2);
      --depth_;
      return true;
    }
    ++extent_.items;
    if (peek() != '<') return depth_ > 0 && takeText('<');
    if (startsWithAnyCase("<?xml")) return takeDeclaration();
    if (startsWith("<!--")) return skipBehind("-->", 4), true;
    if (startsWith("<![CDATA[")) return skipBehind("]]>", 9), true;
    if (peek(1) == '!' || !isNameStart(peek(1))) return skipBehind(">", 1), true;
    return takeElement();
  }

  bool takeElement() {
    advance(1);
    skipSpace();
    extent_.depth = std::max(extent_.depth, depth_ + 1);
    if (!takeName()) return false;
    for (std::size_t attributes = 0;;) {
      skipSpace();
      if (startsWith("/>")) return advance(2), true;
      if (peek() == '>') {
        advance(1);
        ++depth_;
        return true;
      }
      if (!takeAttribute()) return false;
      ++extent_.items;
      extent_.attributes = std::max(extent_.attributes, ++attributes);
    }
  }

  bool takeDeclaration() {
    advance(5);
    while (!atEnd()) {
      if (peek() == '>') return advance(1), true;
      skipSpace();
      if (startsWithAnyCase("version") || startsWithAnyCase("encoding") ||
          startsWithAnyCase("standalone")) {
        if (!takeAttribute()) return false;
      } else {
        while (!atEnd() && peek() != '>' && !isSpace(peek()))
          ++at_;
      }
    }
    return false;
  }

  bool takeName() {
    if (!isNameStart(peek())) return false;
    while (!atEnd() && isNameCharacter(text_[at_]))
      ++at_;
    return true;
  }

  bool takeAttribute() {
    if (!takeName()) return false;
    skipSpace();
    if (peek() != '=') return false;
    advance(1);
    skipSpace();
    const char quote = peek();
    if (quote == '"' || quote == '\'') {
      advance(1);
      if (!takeText(quote)) return false;
      advance(1);
      return true;
    }
    while (!atEnd() && !isSpace(peek()) && peek() != '/' && peek() != '>') {
      if (peek() == '"' || peek() == '\'') return false;
      ++at_;
    }
    return true;
  }

  /// Up to the next `end`, which stays.
  bool takeText(char end) {
    while (!atEnd() && text_[at_] != end) {
      if (text_[at_] == '&' && peek(1) == '#' && peek(2) != '\0') {
        if (!takeReference()) return false;
      } else {
        advance(characterLength(text_[at_]));
      }
    }
    return !atEnd();
  }

  /// A character reference is read backwards from its ";": whatever stands between its "&#" and the
  /// last "x" (decimal: the last "#") is passed over with it.
  bool takeReference() {
    const bool isHex = peek(2) == 'x';
    const std::size_t begin = at_ + (isHex ? 3 : 2);
    const std::size_t end = text_.find(';', begin);
    if (end == std::string_view::npos) return false;
    std::size_t digit = end - 1;
    for (; text_[digit] != (isHex ? 'x' : '#'); --digit) {
      const auto byte = static_cast<unsigned char>(text_[digit]);
      if (isHex ? !std::isxdigit(byte) : !std::isdigit(byte)) return false;
    }
    at_ = end + 1;
    return true;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t depth_ = 0;
  XmlExtent extent_;
};

}  // namespace

XmlExtent measureXml(std::string_view text) {
  return Scanner(text).measure();
}

Limit limitOf(const XmlExtent& extent) {
  if (extent.depth > limits::kXmlDepth) return Limit::XmlDepth;
  if (extent.attributes > limits::kTagAttributes) return Limit::TagAttributes;
  return extent.items > limits::kXmlItems ? Limit::XmlItems : Limit::None;
}

}  // namespace vellumtide
