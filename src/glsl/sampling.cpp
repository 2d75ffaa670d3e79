#include "glsl/sampling.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "kernel/shader_reader.h"

namespace vellumtide {
namespace {

// Longer bodies are not looked at: telling less than could be told costs exactness only.
constexpr std::size_t kBodyLimit = std::size_t{1} << 20;

struct Word {
  std::string_view text;
  TokenKind kind;
  bool inPreprocessor;
  bool inParentheses;
};

class WordCollector : public ShaderReader::Parser {
 public:
  bool onToken(ShaderReader& reader, std::size_t, TokenKind kind, LexState lexState,
               std::string_view token) override {
    const bool isSpace = kind == TokenKind::Blank || token == " " || token == "\n";
    if (!isSpace) {
      words.push_back({token, kind, lexState == LexState::Preprocessor, reader.parenDepth() > 0});
    }
    return false;
  }

  std::vector<Word> words;
};

class BodyAnalysis {
 public:
  explicit BodyAnalysis(const std::vector<Word>& words) : words_(words) {}

  Sampling run() {
    collectPositions();
    Sampling sampling = Sampling::Centres;
    for (std::size_t i = 0; i < words_.size(); ++i) {
      const Word& word = words_[i];
      if (word.kind != TokenKind::Identifier) continue;
      if (word.text.starts_with("texture")) return Sampling::Anywhere;
      if (word.inPreprocessor && isReader(word.text)) return Sampling::Anywhere;
      if (word.text == "sampleNearest") {
        if (!is(i + 1, "(")) return Sampling::Anywhere;
        sampling = Sampling::CentresAtFullResolution;
      } else if ((word.text == "sample" || word.text == "sampleLinear") && !readsAtOutCoord(i)) {
        return Sampling::Anywhere;
      }
    }
    return sampling;
  }

 private:
  static bool isReader(std::string_view text) {
    return text == "outCoord" || text.starts_with("sample");
  }

  bool is(std::size_t i, std::string_view text) const {
    return i < words_.size() && words_[i].text == text;
  }

  bool isOutCoordCall(std::size_t i) const {
    return is(i, "outCoord") && is(i + 1, "(") && is(i + 2, ")");
  }

  // `(image, outCoord())` or `(image, position)` behind the function's name at `i`.
  bool readsAtOutCoord(std::size_t i) const {
    if (!is(i + 1, "(") || !is(i + 3, ",")) return false;
    if (isOutCoordCall(i + 4)) return is(i + 7, ")");
    return is(i + 5, ")") && positions_.count(words_[i + 4].text) != 0;
  }

  bool isPositionDeclaration(std::size_t i) const {
    return i > 0 && (is(i - 1, "float2") || is(i - 1, "vec2")) && is(i + 1, "=") &&
           isOutCoordCall(i + 2) && is(i + 5, ";");
  }

  bool isWrite(std::size_t i) const {
    static constexpr std::array kWrites = {"=", "+=", "-=", "*=", "/=", "++", "--", "["};
    return std::any_of(kWrites.begin(), kWrites.end(),
                       [&](const char* text) { return is(i, text); });
  }

  // Whether the word at `i` may change or hide a variable of that name.
  bool mayChange(std::size_t i) const {
    const Word& word = words_[i];
    const std::size_t next = is(i + 1, ".") ? i + 3 : i + 1;
    if (word.inPreprocessor || isWrite(next)) return true;
    if (i == 0) return false;
    const Word& before = words_[i - 1];
    const bool isDeclared = before.kind == TokenKind::Identifier && before.text != "return";
    const bool isListed = before.text == "," && !word.inParentheses;
    return isDeclared || isListed || before.text == "++" || before.text == "--";
  }

  // Variables declared once as `float2 name = outCoord();` and never changed.
  void collectPositions() {
    std::unordered_map<std::string_view, int> declarations;
    std::unordered_set<std::string_view> changed;
    for (std::size_t i = 0; i < words_.size(); ++i) {
      if (words_[i].kind != TokenKind::Identifier) continue;
      // An argument handed to such a parameter could change without looking like it.
      if (words_[i].text == "out" || words_[i].text == "inout") return;
      if (isPositionDeclaration(i)) {
        ++declarations[words_[i].text];
      } else if (mayChange(i)) {
        changed.insert(words_[i].text);
      }
    }
    for (const auto& [name, count] : declarations) {
      if (count == 1 && changed.count(name) == 0) positions_.insert(name);
    }
  }

  const std::vector<Word>& words_;
  std::unordered_set<std::string_view> positions_;
};

}  // namespace

Sampling samplingOf(std::string_view body) {
  if (body.size() > kBodyLimit) return Sampling::Anywhere;
  ShaderReader reader(body);
  WordCollector collector;
  reader.run(collector);
  return BodyAnalysis(collector.words).run();
}

}  // namespace vellumtide
