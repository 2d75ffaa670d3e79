#pragma once

#include "kernel/kernel_info.h"
#include "kernel/pbk_parser.h"

namespace vellumtide {

/// What the section parsers write to.
struct ParseTarget {
  pbKernelInfo& kernel;
  RecordBudget& budget;

  /// Once the kernel goes beyond a limit nothing more is kept.
  bool isRefused() const { return kernel.beyond != Limit::None; }
  void takeRecord(std::size_t bytes) const {
    if (!budget.take(bytes)) kernel.beyond = Limit::RecordBytes;
  }
};

/// The parameters of one declaration, from behind the type through the ";". Its output is the
/// declaration without metadata: " name, name;".
class PBKParser::ParameterParser : public ShaderReader::Parser {
 public:
  ParameterParser(ParseTarget target, pbElementType declaredType)
      : target_(target), declaredType_(declaredType), current_(declaredType, {}) {}

  bool onToken(ShaderReader& reader, std::size_t length, TokenKind kind, LexState lexState,
               std::string_view token) override;

 private:
  void add();
  void startNext();

  ParseTarget target_;
  pbElementType declaredType_;
  pbParameter current_;
};

/// The metadata block of one parameter, from behind its "<" through the ">".
class PBKParser::ParameterMetaDataParser : public ShaderReader::Parser {
 public:
  explicit ParameterMetaDataParser(pbParameter& parameter) : parameter_(parameter) {}

  bool onToken(ShaderReader& reader, std::size_t length, TokenKind kind, LexState lexState,
               std::string_view token) override;

 private:
  pbParameter& parameter_;
};

/// One value in kernel syntax, through the ";" that ends it.
class PBKParser::ParameterMetaDataValueParser : public ShaderReader::Parser {
 public:
  explicit ParameterMetaDataValueParser(pbElementType type);

  bool onToken(ShaderReader& reader, std::size_t length, TokenKind kind, LexState lexState,
               std::string_view token) override;
  const ValueCells& cells() const { return cells_; }
  /// The value with what is meant by it, and with its place.
  pbValue value() const;

 private:
  void noteText(const ShaderReader& reader, std::size_t length, std::string_view token);
  void storeTruth(bool isTrue);
  void storeNumber(std::string_view token);

  pbElementType type_;
  BaseKind kind_;
  std::size_t componentCount_;
  std::size_t count_ = 0;
  bool positive_ = true;
  ValueCells cells_;
  std::string text_;  // from behind the colon, as far as anybody may mean it
  std::size_t place_ = 0;
};

}  // namespace vellumtide
