#include "kernel/meant_value.h"
#include "kernel/number_text.h"
#include "kernel/section_parsers.h"

namespace vellumtide {
namespace {

pbValue readValue(ShaderReader& reader, pbElementType type) {
  PBKParser::ParameterMetaDataValueParser parser(type);
  reader.run(parser);
  return parser.value();
}

bool isLiteral(LexState state) {
  return state == LexState::CharLiteral || state == LexState::StringLiteral;
}

bool isBlank(std::string_view token) {
  return token.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace

bool PBKParser::ParameterParser::onToken(ShaderReader& reader, std::size_t length, TokenKind kind,
                                         LexState, std::string_view token) {
  if (current_.name.empty() && kind == TokenKind::Identifier) {
    current_.name = token;
    current_.sourceName = token;
    put(" ", reader.position() - length);
    keep(reader, length, token);
  } else if (token == ";") {
    add();
    keep(reader, length, token);
    return true;
  } else if (token == ",") {
    add();
    startNext();
    keep(reader, length, token);
    return target_.isRefused();
  } else if (token == "<") {
    ParameterMetaDataParser parser(current_);
    reader.run(parser);
  }
  return false;
}

void PBKParser::ParameterParser::add() {
  const std::size_t bytes = sizeof(pbParameter) + current_.sourceName.size() +
                            current_.enumValues.size() + current_.aePopupString.size();
  target_.takeRecord(bytes);
  if (!target_.isRefused()) target_.kernel.parameters.push_back(current_);
}

/// The entry lists stay: the next parameter of the declaration inherits them. The numbers of unset
/// values stay too.
void PBKParser::ParameterParser::startNext() {
  current_.type = declaredType_;
  current_.name.clear();
  current_.sourceName.clear();
  current_.defaultValue.isSet = false;
  current_.minValue.isSet = false;
  current_.maxValue.isSet = false;
  current_.parameterType = pbParameterType::None;
  current_.aeUIControl = pbUIControl::None;
  current_.displayName.clear();
  current_.aeDisplayName.clear();
  current_.aePointRelativeDefaultValue.isSet = false;
}

bool PBKParser::ParameterMetaDataParser::onToken(ShaderReader& reader, std::size_t, TokenKind kind,
                                                 LexState lexState, std::string_view token) {
  if (token == ">" && !isLiteral(lexState)) return true;
  if (kind != TokenKind::Identifier) return false;

  if (token == "defaultValue") {
    parameter_.defaultValue = readValue(reader, parameter_.type);
  } else if (token == "minValue") {
    parameter_.minValue = readValue(reader, parameter_.type);
  } else if (token == "maxValue") {
    parameter_.maxValue = readValue(reader, parameter_.type);
  } else if (token == "aeUIControl") {
    parameter_.aeUIControl = uiControlFromName(reader.nextString(";"));
  } else if (token == "parameterType") {
    parameter_.parameterType = parameterTypeFromName(reader.nextString(";"), false);
  } else if (token == "displayName") {
    parameter_.displayName = reader.nextString(";");
  } else if (token == "aeDisplayName") {
    parameter_.aeDisplayName = reader.nextString(";");
  } else if (token == "enumValues") {
    parameter_.enumValues = reader.nextString(";");
  } else if (token == "aePopupString") {
    parameter_.aePopupString = reader.nextString(";");
  } else if (token == "aePointRelativeDefaultValue") {
    parameter_.aePointRelativeDefaultValue =
        relativePointOf(readValue(reader, pbElementType::Float2));
  }
  return false;
}

PBKParser::ParameterMetaDataValueParser::ParameterMetaDataValueParser(pbElementType type)
    : type_(type),
      kind_(baseKind(type)),
      componentCount_(static_cast<std::size_t>(componentCount(type))) {}

pbValue PBKParser::ParameterMetaDataValueParser::value() const {
  pbValue value = valueOf(cells_, text_, type_);
  value.place = place_;
  return value;
}

/// The text is one character longer than the limit at most, so that a cut one is not taken whole.
void PBKParser::ParameterMetaDataValueParser::noteText(const ShaderReader& reader,
                                                       std::size_t length, std::string_view token) {
  if (text_.empty()) {
    if (token == ":" || isBlank(token)) return;
    place_ = reader.position() - length;
  }
  text_.append(token.substr(0, kMeantValueLimit + 1 - text_.size()));
}

bool PBKParser::ParameterMetaDataValueParser::onToken(ShaderReader& reader, std::size_t length,
                                                      TokenKind kind, LexState lexState,
                                                      std::string_view token) {
  if (token != ";" || isLiteral(lexState)) noteText(reader, length, token);
  if (!isLiteral(lexState)) {
    if (token == ";") return true;
    if (token == "-") positive_ = false;
    if (token == ",") positive_ = true;
  }
  const bool isTrue = token == "true";
  if (kind == TokenKind::Number) {
    if (count_ < componentCount_) storeNumber(token);
  } else if ((isTrue || token == "false") && count_ < componentCount_) {
    storeTruth(isTrue);
  } else {
    return false;
  }
  ++count_;
  positive_ = true;
  return false;
}

void PBKParser::ParameterMetaDataValueParser::storeTruth(bool isTrue) {
  if (kind_ == BaseKind::Int) cells_.setInt(count_, isTrue);
  if (kind_ == BaseKind::Float) cells_.setFloat(count_, isTrue ? 1.0f : 0.0f);
  if (kind_ == BaseKind::Bool) cells_.setBool(count_, isTrue);
}

void PBKParser::ParameterMetaDataValueParser::storeNumber(std::string_view token) {
  if (kind_ == BaseKind::Int) cells_.setInt(count_, decimalInt(token, positive_));
  if (kind_ == BaseKind::Float) {
    const auto magnitude = static_cast<float>(decimalNumber(token));
    cells_.setFloat(count_, positive_ ? magnitude : -magnitude);
  }
  if (kind_ == BaseKind::Bool) cells_.setBool(count_, decimalNumber(token) != 0);
}

}  // namespace vellumtide
