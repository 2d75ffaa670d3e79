#include "glsl/sampling.h"

#include <cstddef>
#include <string>
#include <unordered_set>

#include "glsl/body_words.h"
#include "glsl/position_variables.h"

namespace vellumtide {
namespace {

using Texts = std::unordered_set<std::string_view>;

// Longer texts are not looked at: telling less than could be told costs exactness only.
constexpr std::size_t kTextLimit = std::size_t{1} << 20;

bool isImageType(std::string_view text) {
  static const Texts kTypes = {"image1", "image2", "image3", "image4", "sampler2D"};
  return kTypes.count(text) != 0;
}

bool isRead(std::string_view text) {
  return text == "sample" || text == "sampleLinear" || text == "sampleNearest";
}

bool asksOnlyForSize(std::string_view text) {
  return text == "pixelSize" || text == "pixelAspectRatio" || text == "dod";
}

/// Looks at all that may read an image.
class BodyAnalysis {
 public:
  explicit BodyAnalysis(const BodyWords& words) : words_(words) {}

  Sampling run() {
    collect();
    positions_ = positionVariables(words_, ownFunctions_);
    Sampling sampling = Sampling::Centres;
    for (std::size_t i = 0; i < words_.size(); ++i) {
      if (!isPlain(i)) return Sampling::Anywhere;
      if (words_.is(i, "sampleNearest")) sampling = Sampling::CentresAtFullResolution;
    }
    return sampling;
  }

 private:
  /// A name behind a type: declared here, not used.
  bool isDeclared(std::size_t i) const {
    static const Texts kStatements = {"return", "else", "do"};
    const std::size_t before = BodyWords::before(i);
    return words_.isIdentifier(before) && kStatements.count(words_[before].text) == 0;
  }

  void collect() {
    for (std::size_t i = 0; i < words_.size(); ++i) {
      const Word& word = words_[i];
      if (word.kind != TokenKind::Identifier) continue;
      if (word.inPreprocessor) {
        inMacros_.insert(word.text);
      } else if (isImageType(word.text)) {
        addImages(i + 1);
      } else if (word.text == "input") {
        addImages(i + 2);
      } else if (words_.is(i + 1, "(") && isDeclared(i) && !word.text.starts_with("tex")) {
        ownFunctions_.insert(word.text);
      }
    }
  }

  /// The names of a declaration from behind its type; a parameter has one.
  void addImages(std::size_t i) {
    const bool isParameter = i < words_.size() && words_[i].open != kNoWord;
    for (; i < words_.size() && !words_.is(i, ";") && !words_.is(i, ")"); ++i) {
      if (isParameter && words_.is(i, ",")) return;
      if (!words_.isIdentifier(i)) continue;
      images_.insert(words_[i].text);
      declarations_.insert(i);
    }
  }

  /// Nothing at `i` could read an image elsewhere than at a texel's centre.
  bool isPlain(std::size_t i) const {
    const Word& word = words_[i];
    // Quotes hide from the driver what the words show, and the other way round.
    if (word.text == "'" || word.text == "\"") return false;
    if (word.inPreprocessor && word.text == "#" && words_.is(i + 1, "#")) return false;
    if (word.kind != TokenKind::Identifier) return true;
    if (word.text.starts_with("texture")) return false;
    if (word.text.starts_with("sampler") && word.text != "sampler2D") return false;
    if (word.inPreprocessor) return isPlainInMacro(word.text);
    if (word.text == "outCoord") return isOutCoordCall(words_, i) && !isDeclared(i);
    if (isRead(word.text)) return isPlainRead(i);
    const bool isMember = words_.is(BodyWords::before(i), ".");
    return isMember || images_.count(word.text) == 0 || declarations_.count(i) != 0 ||
           isPlainImage(i);
  }

  bool isPlainInMacro(std::string_view text) const {
    return text != "outCoord" && text != "input" && text != "uniform" && !isImageType(text) &&
           !text.starts_with("sample") && images_.count(text) == 0;
  }

  /// `(image, outCoord())` or `(image, position)` behind the function's name at `i`;
  /// `sampleNearest` moves any place to a centre.
  bool isPlainRead(std::size_t i) const {
    if (!words_.is(i + 1, "(") || isDeclared(i)) return false;
    if (words_.is(i, "sampleNearest")) return true;
    if (!words_.is(i + 3, ",")) return false;
    if (isOutCoordCall(words_, i + 4)) return words_.is(i + 7, ")");
    return words_.is(i + 5, ")") && positions_.count(words_[i + 4].text) != 0;
  }

  /// Only the known reads and functions of the body, which is looked at itself, may have an image.
  bool isPlainImage(std::size_t i) const {
    const std::size_t open = words_[i].open;
    if (open == kNoWord) return false;
    const std::string_view callee = words_.callee(open);
    const bool isFirst = open + 1 == i;
    if (isRead(callee) || asksOnlyForSize(callee)) return isFirst;
    const bool isArgument =
        (isFirst || words_.is(i - 1, ",")) && (words_.is(i + 1, ",") || words_.is(i + 1, ")"));
    return isArgument && ownFunctions_.count(callee) != 0 && inMacros_.count(callee) == 0;
  }

  const BodyWords& words_;
  Texts images_;
  std::unordered_set<std::size_t> declarations_;
  Texts ownFunctions_;
  Texts inMacros_;
  Texts positions_;
};

}  // namespace

Sampling samplingOf(std::string_view body, std::string_view function) {
  if (body.size() + function.size() > kTextLimit) return Sampling::Anywhere;
  ShaderReader reader(std::string(body).append("\n").append(function));
  const BodyWords words(reader);
  return BodyAnalysis(words).run();
}

}  // namespace vellumtide
