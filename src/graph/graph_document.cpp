#include "graph/graph_document.h"

#include "graph/graph_reader.h"
#include "graph/xml_extent.h"

namespace vellumtide {
namespace {

/// Bytes that a cut character at the end of the text makes TinyXML step over.
constexpr std::size_t kPadding = 4;

}  // namespace

bool buildDocument(std::string text, TiXmlDocument& document, bool positions) {
  if (text.size() > kGraphTextLimit || !isWithinLimits(measureXml(text))) return false;
  text.append(kPadding, '\0');
  document.SetTabSize(positions ? 1 : 0);
  document.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
  return true;
}

const TiXmlText* leadingText(const TiXmlElement& element) {
  const TiXmlNode* child = element.FirstChild();
  return child ? child->ToText() : nullptr;
}

}  // namespace vellumtide
