#include "kernel/shader_reader.h"

#include <algorithm>
#include <array>

#include "kernel/characters.h"

namespace vellumtide {
namespace {

constexpr char kTextEnd = '\x03';

enum class CharClass : std::uint8_t { Other, Space, LineEnd, Digit, Letter, Punctuation };

constexpr CharClass classify(int c) {
  if (c == ' ' || c == '\t') return CharClass::Space;
  if (c == '\r' || c == '\n') return CharClass::LineEnd;
  if (c >= '0' && c <= '9') return CharClass::Digit;
  if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_') return CharClass::Letter;
  if ((c >= 33 && c <= 47) || (c >= 58 && c <= 64) || (c >= 91 && c <= 96) ||
      (c >= 123 && c <= 126)) {
    return CharClass::Punctuation;
  }
  return CharClass::Other;
}

constexpr std::array<CharClass, 256> kClasses = [] {
  std::array<CharClass, 256> classes{};
  for (int c = 0; c < 256; ++c)
    classes[static_cast<std::size_t>(c)] = classify(c);
  return classes;
}();

CharClass classOf(char c) {
  return kClasses[static_cast<unsigned char>(c)];
}
bool isLiteral(LexState state) {
  return state == LexState::CharLiteral || state == LexState::StringLiteral;
}

}  // namespace

bool ShaderReader::Parser::onToken(ShaderReader& reader, std::size_t length, TokenKind, LexState,
                                   std::string_view token) {
  keep(reader, length, token);
  return false;
}

void ShaderReader::Parser::runInto(ShaderReader& reader, Parser& parser,
                                   void (ShaderReader::*run)(Parser&)) {
  SourceMap own;
  if (map) parser.map = &own;
  (reader.*run)(parser);
  if (map) map->append(own, output.size());
  output.append(parser.output);
}

/// Only comments are longer than the token that stands for them.
void ShaderReader::Parser::noteKept(std::size_t source, std::size_t length, std::size_t appended) {
  const std::size_t text = output.size() - appended;
  if (length == appended) {
    map->addCopy(text, source, length);
  } else {
    map->addReplaced(text, source, appended);
  }
}

ShaderReader::ShaderReader(std::string_view text) : text_(text.substr(0, text.find(kTextEnd))) {}

void ShaderReader::run(Parser& parser) {
  while (!atEnd()) {
    const Token token = next();
    if (parser.onToken(*this, token.length, token.kind, lexState_, token.text)) return;
  }
  lexState_ = LexState::End;
}

std::string_view ShaderReader::nextIdentifier(std::string_view stop) {
  return nextOfKind(TokenKind::Identifier, stop);
}

std::string_view ShaderReader::nextNumber(std::string_view stop) {
  return nextOfKind(TokenKind::Number, stop);
}

std::string_view ShaderReader::nextOfKind(TokenKind kind, std::string_view stop) {
  while (!atEnd()) {
    const Token token = next();
    if (token.kind == kind) return token.text;
    if (token.text == stop) return {};
  }
  lexState_ = LexState::End;
  return {};
}

std::string_view ShaderReader::nextString(std::string_view stop) {
  while (!atEnd()) {
    const bool wasLiteral = isLiteral(lexState_);
    const Token token = next();
    if (!wasLiteral && isLiteral(lexState_)) return restOfLiteral();
    if (token.text == stop) return {};
  }
  lexState_ = LexState::End;
  return {};
}

/// From just behind the opening quote: the content, with the closing quote consumed too.
std::string_view ShaderReader::restOfLiteral() {
  const std::size_t begin = position_;
  while (!atEnd()) {
    const char c = text_[position_];
    if (classOf(c) == CharClass::LineEnd) {
      passLineEnd(position_);
    } else {
      passPunctuation(c);
    }
    ++position_;
    if (!isLiteral(lexState_)) {
      return std::string_view(text_).substr(begin, position_ - 1 - begin);
    }
  }
  return std::string_view(text_).substr(begin);
}

void ShaderReader::runLine(Parser& parser) {
  lexState_ = LexState::Preprocessor;
  while (lexState_ == LexState::Preprocessor && !atEnd()) {
    const bool isLineComment = peek(0) == '/' && peek(1) == '/';
    const bool isBlockComment = peek(0) == '/' && peek(1) == '*';
    const Token token = next();
    if (isBlockComment) lexState_ = LexState::Preprocessor;
    parser.onToken(*this, token.length, token.kind, lexState_, token.text);
    if (isLineComment) break;
  }
  lexState_ = LexState::Code;
  oddBackslashes_ = false;
}

void ShaderReader::skipCharacter() {
  if (atEnd()) return;
  const char c = text_[position_];
  if (classOf(c) == CharClass::LineEnd) {
    passLineEnd(position_);
  } else {
    passPunctuation(c);
  }
  ++position_;
}

/// Takes the token at the position; the text must not be at its end.
ShaderReader::Token ShaderReader::next() {
  const std::size_t begin = position_;
  const char c = text_[begin];
  std::size_t end = begin + 1;
  TokenKind kind = TokenKind::Other;
  switch (classOf(c)) {
    case CharClass::Letter:
      kind = TokenKind::Identifier;
      while (end < text_.size() && isWordCharacter(text_[end]))
        ++end;
      oddBackslashes_ = false;
      break;
    case CharClass::Space:
      kind = TokenKind::Blank;
      oddBackslashes_ = false;
      break;
    case CharClass::LineEnd:
      kind = TokenKind::Blank;
      passLineEnd(begin);
      break;
    case CharClass::Digit:
      kind = TokenKind::Number;
      end = begin + numberLength();
      oddBackslashes_ = false;
      break;
    case CharClass::Punctuation:
      if (c == '/' && !isLiteral(lexState_) && (peek(1) == '/' || peek(1) == '*')) {
        return takeComment(peek(1) == '*');
      }
      if (c == '.' && isDigit(peek(1))) {
        kind = TokenKind::Number;
        end = begin + numberLength();
        oddBackslashes_ = false;
      } else {
        kind = TokenKind::Operator;
        end = begin + operatorLength();
        passPunctuation(c);
      }
      break;
    case CharClass::Other:
      oddBackslashes_ = false;
      break;
  }
  position_ = end;
  return {kind, end - begin, std::string_view(text_).substr(begin, end - begin)};
}

/// A number: "0x" and hex digits, or digits with at most one point; then at most one suffix letter.
std::size_t ShaderReader::numberLength() const {
  std::size_t length = 0;
  if (peek(0) == '0' && peek(1) == 'x') {
    length = 2;
    while (isHexDigit(peek(length)))
      ++length;
  } else {
    bool hasPoint = false;
    while (isDigit(peek(length)) || (peek(length) == '.' && !hasPoint)) {
      hasPoint = hasPoint || peek(length) == '.';
      ++length;
    }
  }
  const char suffix = peek(length);
  const bool isSuffix =
      suffix != '\0' && std::string_view("fFlLuU").find(suffix) != std::string_view::npos;
  return length + isSuffix;
}

/// An operator: ++ -- << >> && ||, or one of + - < > * / with an equals sign, or one character.
std::size_t ShaderReader::operatorLength() const {
  const char c = peek(0);
  const char second = peek(1);
  switch (c) {
    case '+':
    case '-':
    case '<':
    case '>':
      return second == c || second == '=' ? 2 : 1;
    case '*':
    case '/':
      return second == '=' ? 2 : 1;
    case '&':
    case '|':
      return second == c ? 2 : 1;
    default:
      return 1;
  }
}

/// A line comment takes its line end along; a comment that is never closed reaches to the end of
/// the text. Inside a preprocessor line an uncontinued line end ends that line.
ShaderReader::Token ShaderReader::takeComment(bool isBlock) {
  const std::size_t begin = position_;
  const std::size_t mark =
      isBlock ? text_.find("*/", begin + 2) : text_.find_first_of("\r\n", begin);
  const std::size_t end = mark == std::string::npos ? text_.size() : mark + (isBlock ? 2 : 1);
  for (std::size_t at = begin; at < end; ++at) {
    if (classOf(text_[at]) == CharClass::LineEnd) passLineEnd(at);
  }
  oddBackslashes_ = false;
  position_ = end;
  return {TokenKind::Blank, end - begin, isBlock ? " " : "\n"};
}

void ShaderReader::passLineEnd(std::size_t at) {
  ++lineCount_;
  oddBackslashes_ = false;
  if (lexState_ == LexState::Preprocessor && !isContinued(at)) lexState_ = LexState::Code;
}

/// A backslash joins lines; it joins over a CR LF pair too.
bool ShaderReader::isContinued(std::size_t at) const {
  if (at == 0) return false;
  if (text_[at - 1] == '\\') return true;
  return text_[at] == '\n' && text_[at - 1] == '\r' && at > 1 && text_[at - 2] == '\\';
}

void ShaderReader::passPunctuation(char c) {
  const bool isEscaped = oddBackslashes_;
  oddBackslashes_ = c == '\\' && !isEscaped;
  const bool isCode = lexState_ == LexState::Code;
  switch (c) {
    case '{':
      braceDepth_ += isCode;
      break;
    case '}':
      braceDepth_ -= isCode;
      break;
    case '(':
      parenDepth_ += isCode;
      break;
    case ')':
      parenDepth_ -= isCode;
      break;
    case '#':
      if (isCode) lexState_ = LexState::Preprocessor;
      break;
    case '\'':
    case '"': {
      const LexState own = c == '"' ? LexState::StringLiteral : LexState::CharLiteral;
      if (isEscaped) break;
      if (isCode) {
        lexState_ = own;
      } else if (lexState_ == own) {
        lexState_ = LexState::Code;
      }
      break;
    }
    default:
      break;
  }
}

}  // namespace vellumtide
