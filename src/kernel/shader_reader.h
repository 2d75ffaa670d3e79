#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "kernel/source_map.h"

namespace vellumtide {

enum class TokenKind : std::int32_t {
  Other = 0,
  Blank = 1,
  Number = 2,
  Identifier = 3,
  Operator = 4,
};

enum class LexState : std::int32_t {
  Code = 0,
  Preprocessor = 1,
  BlockComment = 2,
  LineComment = 3,
  CharLiteral = 4,
  StringLiteral = 5,
  End = 6,
};

/// A forward tokeniser for C-like text. It never rejects anything: every character belongs to some
/// token, and whoever drives it decides what to keep. The text ends at a character of code 3.
///
/// Comments arrive as one token each, a blank for a block comment and a line feed for a line
/// comment (which takes its line end along). Literals arrive token by token, with `lexState`
/// telling that they are inside.
class ShaderReader {
 public:
  /// Receives tokens. The base parser copies everything to its output.
  class Parser {
   public:
    Parser() = default;
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;
    virtual ~Parser() = default;

    /// Called once a token, when the reader's position, depths and state are already behind it.
    /// `length` is the token's length in the source, `token` its text (valid as long as the
    /// reader). Returns true when the parser is done.
    virtual bool onToken(ShaderReader& reader, std::size_t length, TokenKind kind,
                         LexState lexState, std::string_view token);

    std::string output;
    /// Where the output comes from in the reader's text, when somebody wants to know.
    SourceMap* map = nullptr;

   protected:
    /// Appends the token that the reader has just passed.
    void keep(const ShaderReader& reader, std::size_t length, std::string_view token) {
      output.append(token);
      if (map) noteKept(reader.position() - length, length, token.size());
    }
    /// Appends `text` in place of what stands at `source`.
    void put(std::string_view text, std::size_t source) {
      if (map) map->addReplaced(output.size(), source, text.size());
      output.append(text);
    }
    /// Runs `parser`, over the whole text or a line of it, and appends its output.
    void runInto(ShaderReader& reader, Parser& parser,
                 void (ShaderReader::*run)(Parser&) = &ShaderReader::run);
    /// Notes that the last `appended` characters of the output are the token of that place.
    void noteKept(std::size_t source, std::size_t length, std::size_t appended);
  };

  explicit ShaderReader(std::string_view text);
  ShaderReader(const ShaderReader&) = delete;
  ShaderReader& operator=(const ShaderReader&) = delete;
  virtual ~ShaderReader() = default;

  /// Hands token after token to `parser` until it is done or the text ends.
  virtual void run(Parser& parser);

  /// The next identifier (number), consumed. A token equal to `stop` that comes first is consumed
  /// and gives an empty text, as does the end of the text. An empty `stop` never matches.
  virtual std::string_view nextIdentifier(std::string_view stop);
  virtual std::string_view nextNumber(std::string_view stop);

  /// The content of the next character or string literal, consumed with its quotes; escapes stay
  /// as written. `stop` as above. A literal that is never closed reaches to the end of the text.
  virtual std::string_view nextString(std::string_view stop);

  /// Hands the rest of a preprocessor line to `parser`, its line end included. Lines joined by a
  /// backslash or inside a block comment count as one. The reader is in code afterwards.
  void runLine(Parser& parser);

  /// Moves over one character as the character rules say, without making a token of it.
  void skipCharacter();

  /// The character `ahead` places behind the position, 0 behind the end of the text.
  char peek(std::size_t ahead) const {
    return ahead < text_.size() - position_ ? text_[position_ + ahead] : '\0';
  }

  std::size_t position() const { return position_; }
  std::size_t length() const { return text_.size(); }
  bool atEnd() const { return position_ == text_.size(); }
  /// CRs and LFs passed; a CR LF pair counts twice.
  std::size_t lineCount() const { return lineCount_; }
  /// Opening less closing braces (parentheses) passed in code; negative when unbalanced.
  std::int64_t braceDepth() const { return braceDepth_; }
  std::int64_t parenDepth() const { return parenDepth_; }
  LexState lexState() const { return lexState_; }

 private:
  struct Token {
    TokenKind kind;
    std::size_t length;
    std::string_view text;
  };

  Token next();
  Token takeComment(bool isBlock);
  std::size_t numberLength() const;
  std::size_t operatorLength() const;
  void passLineEnd(std::size_t at);
  void passPunctuation(char c);
  bool isContinued(std::size_t at) const;
  std::string_view nextOfKind(TokenKind kind, std::string_view stop);
  std::string_view restOfLiteral();

  std::string text_;
  std::size_t position_ = 0;
  std::size_t lineCount_ = 0;
  std::int64_t braceDepth_ = 0;
  std::int64_t parenDepth_ = 0;
  LexState lexState_ = LexState::Code;
  /// The characters right before the position are an odd run of backslashes.
  bool oddBackslashes_ = false;
};

}  // namespace vellumtide
