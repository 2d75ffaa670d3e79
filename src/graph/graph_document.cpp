#include "graph/graph_document.h"

#include "graph/xml_extent.h"

namespace vellumtide {
namespace {

/// Bytes that a cut character at the end of the text makes TinyXML step over.
constexpr std::size_t kPadding = 4;

}  // namespace

Limit buildDocument(std::string text, TiXmlDocument& document, bool positions) {
  if (text.size() > limits::kTextBytes) return Limit::TextBytes;
  if (const Limit beyond = limitOf(measureXml(text)); beyond != Limit::None) return beyond;
  text.append(kPadding, '\0');
  document.SetTabSize(positions ? 1 : 0);
  document.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
  return Limit::None;
}

const TiXmlText* leadingText(const TiXmlElement& element) {
  const TiXmlNode* child = element.FirstChild();
  return child ? child->ToText() : nullptr;
}

}  // namespace vellumtide
