#include "kernel/pbk_parser.h"

#include <string>
#include <utility>

#include "kernel/number_text.h"
#include "kernel/section_parsers.h"

namespace vellumtide {
namespace {

/// Copies one declaration through its ";" and notes every identifier in it as a variable.
class DeclarationParser : public ShaderReader::Parser {
 public:
  DeclarationParser(ParseTarget target, std::vector<pbVariable>& variables, std::size_t most,
                    pbElementType type)
      : target_(target), variables_(variables), most_(most), type_(type) {}

  bool onToken(ShaderReader& reader, std::size_t length, TokenKind kind, LexState,
               std::string_view token) override {
    keep(reader, length, token);
    if (kind == TokenKind::Identifier) {
      if (variables_.size() == most_) target_.kernel.beyond = Limit::KernelInputs;
      target_.takeRecord(sizeof(pbVariable) + length);
      if (target_.isRefused()) return true;
      variables_.emplace_back(type_, token);
    }
    return token == ";";
  }

 private:
  ParseTarget target_;
  std::vector<pbVariable>& variables_;
  std::size_t most_;
  pbElementType type_;
};

}  // namespace

class PBKParser::InputsParser : public DeclarationParser {
 public:
  InputsParser(ParseTarget target, pbElementType type)
      : DeclarationParser(target, target.kernel.inputs, limits::kKernelInputs, type) {}
};

class PBKParser::DependentsParser : public DeclarationParser {
 public:
  DependentsParser(ParseTarget target, pbElementType type)
      : DeclarationParser(target, target.kernel.dependents, limits::kRecordBytes, type) {}
};

/// The metadata blocks in front of the kernel's brace, through the ">".
class PBKParser::MetaDataParser : public ShaderReader::Parser {
 public:
  explicit MetaDataParser(pbKernelInfo& kernel) : kernel_(kernel) {}

  bool onToken(ShaderReader& reader, std::size_t, TokenKind, LexState,
               std::string_view token) override {
    if (token == ">") return true;
    if (token == "languageVersion") {
      kernel_.languageVersion = decimalInt(reader.nextNumber(">"), true);
    } else if (token == "namespace") {
      kernel_.nameSpace = reader.nextString(">");
    } else if (token == "vendor") {
      kernel_.vendor = reader.nextString(">");
    } else if (token == "version") {
      kernel_.version = decimalInt(reader.nextNumber(">"), true);
    } else if (token == "description") {
      kernel_.description = reader.nextString(">");
    }
    return false;
  }

 private:
  pbKernelInfo& kernel_;
};

/// From behind the name `evaluateDependents` through its function's closing brace. The statements
/// are left to the vertex shader.
class PBKParser::EvaluateDependentsParser : public ShaderReader::Parser {
 public:
  bool onToken(ShaderReader& reader, std::size_t length, TokenKind, LexState lexState,
               std::string_view token) override {
    const bool isCode = lexState == LexState::Code;
    const bool isEnd = token == "}" && isCode && reader.braceDepth() == 1;
    const std::size_t place = reader.position() - length;
    if (isEnd) put("\n#endif\n", place);
    keep(reader, length, token);
    if (token == "{" && isCode && reader.braceDepth() == 2) {
      put("\n#ifdef vlmk_VERTEX_SHADER\n", place);
    }
    return isEnd;
  }
};

/// The whole source. The order of its tests is the meaning of the language: a section word acts
/// wherever it stands.
class PBKParser::GlobalParser : public ShaderReader::Parser {
 public:
  explicit GlobalParser(ParseTarget target) : target_(target) {}

  bool onToken(ShaderReader& reader, std::size_t length, TokenKind kind, LexState lexState,
               std::string_view token) override {
    if (kind == TokenKind::Identifier) {
      if (onWord(reader, token)) return target_.isRefused();
    } else if (kind == TokenKind::Operator) {
      if (token == "}" && reader.braceDepth() == 0) return true;
      // Later braces at this depth stand in macros and quotes, and belong to the body.
      if (token == "{" && reader.braceDepth() == 1 && !isInsideBody_) {
        isInsideBody_ = true;
        return false;
      }
      if (token == "<" && reader.braceDepth() == 0) {
        MetaDataParser parser(target_.kernel);
        reader.run(parser);
        return false;
      }
    }
    if (isInsideBody_) {
      output.append(token);
    } else if (lexState == LexState::Preprocessor) {
      keepLine(reader, length);
    }
    return false;
  }

 private:
  /// True when the word is one that the parser acts on. The words differ in length and first
  /// letter, so that all others are told apart quickly.
  bool onWord(ShaderReader& reader, std::string_view word) {
    switch (word.size()) {
      case 5:
        if (word == "union") return put("vlmk_union", placeOf(reader, word)), true;
        if (word == "input") return onInput(reader), true;
        return false;
      case 6:
        if (word == "kernel") return target_.kernel.name = reader.nextIdentifier(""), true;
        if (word == "output") return onOutput(reader), true;
        return false;
      case 9:
        if (word == "parameter") return onParameter(reader), true;
        if (word == "dependent") return onDependent(reader), true;
        return false;
      case 18:
        if (word == "evaluateDependents") return onEvaluateDependents(reader, word), true;
        return false;
      default:
        return false;
    }
  }

  void onInput(ShaderReader& reader) {
    const std::string_view type = declarationType(reader, "input");
    if (type.empty()) return;
    InputsParser parser(target_, typeFromName(type));
    runInto(reader, parser);
  }

  void onOutput(ShaderReader& reader) {
    const std::string_view type = declarationType(reader, "output");
    if (type.empty()) return;
    const std::string_view name = reader.nextIdentifier(";");
    if (name.empty()) return;
    put(" ", placeOf(reader, name));
    keep(reader, name.size(), name);
    target_.kernel.output = pbVariable(typeFromName(type), name);
  }

  void onParameter(ShaderReader& reader) {
    const std::string_view type = declarationType(reader, "parameter");
    if (type.empty()) return;
    ParameterParser parser(target_, typeFromName(type));
    runInto(reader, parser);
  }

  void onDependent(ShaderReader& reader) {
    const std::size_t place = placeOf(reader, "dependent");
    const std::string_view name = reader.nextIdentifier(";");
    if (name.empty()) return;
    const pbElementType type = typeFromName(name);
    put(isCarried(type) ? "dependent " : "dependent varying ", place);
    keep(reader, name.size(), name);
    DependentsParser parser(target_, type);
    runInto(reader, parser);
  }

  void onEvaluateDependents(ShaderReader& reader, std::string_view word) {
    keep(reader, word.size(), word);
    EvaluateDependentsParser parser;
    runInto(reader, parser);
  }

  /// The next identifier, appended behind the declaration's word, which the reader has just passed;
  /// empty, with nothing appended, without one before the ";".
  std::string_view declarationType(ShaderReader& reader, std::string_view word) {
    const std::size_t place = placeOf(reader, word);
    const std::string_view type = reader.nextIdentifier(";");
    if (type.empty()) return type;
    put(word, place);
    put(" ", place);
    keep(reader, type.size(), type);
    return type;
  }

  /// A preprocessor line from its "#", which the reader has passed, through its end.
  void keepLine(ShaderReader& reader, std::size_t length) {
    const std::size_t place = reader.position() - length;
    put("#", place);
    Parser line;
    runInto(reader, line, &ShaderReader::runLine);
    put("\n", reader.position());
  }

  /// Where the word stands that the reader has just passed.
  static std::size_t placeOf(const ShaderReader& reader, std::string_view word) {
    return reader.position() - word.size();
  }

  ParseTarget target_;
  bool isInsideBody_ = false;
};

/// The same with a map. Most tokens are appended as they are, which the parser above does without
/// looking for a map, so that it costs nothing when there is none.
class PBKParser::MappedGlobalParser : public GlobalParser {
 public:
  MappedGlobalParser(ParseTarget target, SourceMap* bodyMap) : GlobalParser(target) {
    map = bodyMap;
  }

  bool onToken(ShaderReader& reader, std::size_t length, TokenKind kind, LexState lexState,
               std::string_view token) override {
    const std::size_t place = reader.position() - length;
    const bool isDone = GlobalParser::onToken(reader, length, kind, lexState, token);
    if (map->size() < output.size()) noteKept(place, length, token.size());
    return isDone;
  }
};

PBKParser::PBKParser(std::string_view text, RecordBudget* budget)
    : ShaderReader(text), budget_(budget ? budget : &ownBudget_) {}

void PBKParser::parse(pbKernelInfo& kernel, SourceMap* bodyMap) {
  const ParseTarget target{kernel, *budget_};
  const auto parseWith = [&](GlobalParser&& parser) {
    run(parser);
    kernel.body = std::move(parser.output);
  };
  if (length() > limits::kTextBytes) {
    kernel.beyond = Limit::TextBytes;
  } else if (bodyMap) {
    parseWith(MappedGlobalParser(target, bodyMap));
  } else {
    parseWith(GlobalParser(target));
  }
  if (!target.isRefused()) return;
  const Limit beyond = kernel.beyond;
  kernel = pbKernelInfo();
  kernel.beyond = beyond;
}

}  // namespace vellumtide
