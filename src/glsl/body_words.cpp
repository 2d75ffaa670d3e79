#include "glsl/body_words.h"

namespace vellumtide {
namespace {

class WordCollector : public ShaderReader::Parser {
 public:
  explicit WordCollector(std::vector<Word>& words) : words_(words) {}

  bool onToken(ShaderReader&, std::size_t, TokenKind kind, LexState lexState,
               std::string_view token) override {
    if (kind == TokenKind::Blank) return false;
    const bool inPreprocessor = lexState == LexState::Preprocessor;
    if (inPreprocessor && !wasInPreprocessor_) inLine_.clear();
    wasInPreprocessor_ = inPreprocessor;
    std::vector<std::size_t>& open = inPreprocessor ? inLine_ : inCode_;
    if (token == ")" && !open.empty()) {
      words_[open.back()].close = words_.size();
      open.pop_back();
    }
    words_.push_back({token, kind, inPreprocessor, open.empty() ? kNoWord : open.back(), kNoWord});
    if (token == "(") open.push_back(words_.size() - 1);
    return false;
  }

 private:
  std::vector<Word>& words_;
  std::vector<std::size_t> inCode_;
  std::vector<std::size_t> inLine_;
  bool wasInPreprocessor_ = false;
};

}  // namespace

BodyWords::BodyWords(ShaderReader& reader) {
  WordCollector collector(words_);
  reader.run(collector);
}

}  // namespace vellumtide
