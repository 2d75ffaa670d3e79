#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "kernel/shader_reader.h"

namespace vellumtide {

inline constexpr std::size_t kNoWord = static_cast<std::size_t>(-1);

/// One token of a kernel body that is neither blank nor comment.
struct Word {
  std::string_view text;
  TokenKind kind;
  bool inPreprocessor;
  std::size_t open;   ///< the innermost "(" that it stands in, kNoWord outside
  std::size_t close;  ///< of a "(" the ")" that belongs to it, kNoWord otherwise
};

/// The words of a kernel body with its parentheses paired. Those of a preprocessor line pair among
/// themselves.
class BodyWords {
 public:
  /// Refers to `reader`, which must be fresh and outlive the words.
  explicit BodyWords(ShaderReader& reader);

  std::size_t size() const { return words_.size(); }
  const Word& operator[](std::size_t i) const { return words_[i]; }

  /// False behind the last word and for kNoWord.
  bool is(std::size_t i, std::string_view text) const {
    return i < words_.size() && words_[i].text == text;
  }
  bool isIdentifier(std::size_t i) const {
    return i < words_.size() && words_[i].kind == TokenKind::Identifier;
  }

  /// The word before; kNoWord at the first.
  static std::size_t before(std::size_t i) { return i == 0 || i == kNoWord ? kNoWord : i - 1; }

  /// The identifier in front of the "(" at `open`; empty when another word stands there.
  std::string_view callee(std::size_t open) const {
    const std::size_t name = before(open);
    return isIdentifier(name) ? words_[name].text : std::string_view();
  }

 private:
  std::vector<Word> words_;
};

}  // namespace vellumtide
