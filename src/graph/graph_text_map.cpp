#include "graph/graph_text_map.h"

#include <cctype>
#include <charconv>
#include <string>
#include <string_view>

#include "graph/graph_document.h"

namespace vellumtide {
namespace {

constexpr std::string_view kCdata = "<![CDATA[";

/// Finds TinyXML's rows and columns in a text, forwards only.
class XmlCursor {
 public:
  explicit XmlCursor(std::string_view text) : text_(text) {}

  /// The byte at a row and column, both from 1; the text's end when there is none.
  std::size_t find(int row, int column) {
    while (at_ < text_.size() && (row_ < row || (row_ == row && column_ < column)))
      step();
    return at_;
  }

 private:
  /// Over what TinyXML counts as one: a pair of line ends in any order, a character as told by its
  /// first byte. Marks of three bytes that it takes for blanks have no column.
  void step() {
    const auto byte = static_cast<unsigned char>(text_[at_]);
    if (byte == '\r' || byte == '\n') {
      ++at_;
      if (at_ < text_.size() && text_[at_] == (byte == '\r' ? '\n' : '\r')) ++at_;
      ++row_;
      column_ = 1;
      return;
    }
    const std::string_view character = text_.substr(at_, length(byte));
    at_ += character.size();
    const bool isMark =
        character == "\xEF\xBB\xBF" || character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF";
    column_ += !isMark;
  }

  static std::size_t length(unsigned char first) {
    if (first < 0xc2 || first > 0xf4) return 1;
    if (first < 0xe0) return 2;
    return first < 0xf0 ? 3 : 4;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  int row_ = 1;
  int column_ = 1;
};

bool isSpace(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

std::size_t utf8Length(unsigned long code) {
  if (code < 0x80) return 1;
  if (code < 0x800) return 2;
  if (code < 0x10000) return 3;
  return code < 0x200000 ? 4 : 0;
}

struct Reference {
  std::size_t length;    // in the file
  std::size_t produced;  // bytes in the value
};

/// What stands at the "&" that `text` begins with. One that is not known gives nothing.
Reference referenceAt(std::string_view text) {
  for (const std::string_view name : {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"}) {
    if (text.starts_with(name)) return {name.size(), 1};
  }
  const std::size_t end = text.find(';');
  if (!text.starts_with("&#") || end == std::string_view::npos) return {1, 0};
  const bool isHex = text.starts_with("&#x");
  unsigned long code = 0;
  std::from_chars(text.data() + (isHex ? 3 : 2), text.data() + end, code, isHex ? 16 : 10);
  return {end + 1, utf8Length(code)};
}

/// Follows the reading of `value` from the text at `at`, as far as the two agree.
SourceMap mapText(std::string_view text, std::size_t at, std::string_view value) {
  SourceMap map;
  std::size_t done = 0;
  while (done < value.size() && at < text.size()) {
    const char c = text[at];
    if (isSpace(c)) {
      while (at < text.size() && isSpace(text[at]))
        ++at;
      if (value[done] != ' ') break;
      if (text[at - 1] == ' ') {
        map.addCopy(done++, at - 1, 1);
      } else {
        map.addReplaced(done++, at - 1, 1);
      }
    } else if (c == '&') {
      const Reference reference = referenceAt(text.substr(at));
      map.addReplaced(done, at, reference.produced);
      done += reference.produced;
      at += reference.length;
    } else if (c == value[done]) {
      map.addCopy(done++, at++, 1);
    } else {
      break;
    }
  }
  return map;
}

SourceMap mapCdata(std::string_view text, std::size_t at, std::string_view value) {
  SourceMap map;
  if (text.substr(at + kCdata.size()).starts_with(value)) {
    map.addCopy(0, at + kCdata.size(), value.size());
  }
  return map;
}

SourceMap mapNode(const TiXmlText* node, std::string_view text, XmlCursor& cursor) {
  if (!node) return {};
  const std::size_t at = cursor.find(node->Row(), node->Column());
  const bool isCdata = text.substr(at).starts_with(kCdata);
  return isCdata ? mapCdata(text, at, node->Value()) : mapText(text, at, node->Value());
}

/// Where the text of a "value" attribute begins, behind its quote.
std::size_t valuePlace(const TiXmlElement& element, std::string_view text, XmlCursor& cursor) {
  const TiXmlAttribute* attribute = element.FirstAttribute();
  while (attribute && std::string_view(attribute->Name()) != "value")
    attribute = attribute->Next();
  if (!attribute) return 0;
  const std::size_t at = cursor.find(attribute->Row(), attribute->Column());
  const std::size_t quote = text.find_first_of("\"'", at);
  return quote == std::string_view::npos ? at : quote + 1;
}

GraphValuePlaces placesOf(const TiXmlElement& parameter, std::string_view text, XmlCursor& cursor) {
  GraphValuePlaces places;
  forEachChild(parameter, "metadata", [&](const TiXmlElement& entry) {
    const char* attribute = entry.Attribute("name");
    const std::string_view name = attribute ? attribute : "";
    const std::size_t place = valuePlace(entry, text, cursor);
    if (name == "defaultValue") places.defaultValue = place;
    if (name == "minValue") places.minValue = place;
    if (name == "maxValue") places.maxValue = place;
    if (name == "aePointRelativeDefaultValue") places.relativeDefault = place;
  });
  return places;
}

}  // namespace

GraphTextMaps mapGraphTexts(const char* text) {
  GraphTextMaps maps;
  TiXmlDocument document;
  if (buildDocument(text, document, true) != Limit::None) return maps;
  const TiXmlElement* root = document.FirstChildElement("graph");
  if (!root) return maps;
  XmlCursor values(text);
  forEachChild(*root, "parameter", [&](const TiXmlElement& element) {
    if (!element.Attribute("name") || !element.Attribute("type")) return;
    maps.parameterValues.push_back(placesOf(element, text, values));
  });
  XmlCursor kernels(text);
  forEachChild(*root, "kernel", [&](const TiXmlElement& element) {
    const TiXmlText* node = leadingText(element);
    if (node) maps.kernelSources.push_back(mapNode(node, text, kernels));
  });
  XmlCursor functions(text);
  forEachChild(*root, "node", [&](const TiXmlElement& element) {
    const TiXmlElement* function = element.FirstChildElement("evaluateParameters");
    maps.functionSources.push_back(
        mapNode(function ? leadingText(*function) : nullptr, text, functions));
  });
  return maps;
}

}  // namespace vellumtide
