#include "graph/graph_reader.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>

#include "graph/graph_document.h"
#include "kernel/meant_value.h"
#include "kernel/pbk_parser.h"
#include "kernel/value_text.h"

namespace vellumtide {
namespace {

std::string_view textOf(const char* attribute) {
  return attribute ? std::string_view(attribute) : std::string_view();
}

std::string_view attribute(const TiXmlElement& element, const char* name) {
  return textOf(element.Attribute(name));
}

/// The leading integer of an attribute, 1 without one.
std::int32_t integerOr1(const TiXmlElement& element, const char* name) {
  int value = 1;
  return element.QueryIntAttribute(name, &value) == TIXML_SUCCESS ? value : 1;
}

void readMetadata(const TiXmlElement& element, pbGraphInfo& info) {
  const std::string_view name = attribute(element, "name");
  if (name == "namespace") {
    info.nameSpace = attribute(element, "value");
  } else if (name == "vendor") {
    info.vendor = attribute(element, "value");
  } else if (name == "version") {
    info.version = integerOr1(element, "value");
  } else if (name == "description") {
    info.description = attribute(element, "value");
  }
}

pbValue valueOfText(std::string_view text, pbElementType type) {
  return valueOf(valueFromText(text, type), text, type);
}

/// One metadata entry of a parameter. An entry that is named is set, with or without a value.
void readParameterMetadata(const TiXmlElement& element, pbParameter& parameter) {
  const std::string_view name = attribute(element, "name");
  const std::string_view value = attribute(element, "value");
  if (name == "defaultValue") {
    parameter.defaultValue = valueOfText(value, parameter.type);
  } else if (name == "minValue") {
    parameter.minValue = valueOfText(value, parameter.type);
  } else if (name == "maxValue") {
    parameter.maxValue = valueOfText(value, parameter.type);
  } else if (name == "aeUIControl") {
    parameter.aeUIControl = uiControlFromName(value);
  } else if (name == "parameterType") {
    parameter.parameterType = parameterTypeFromName(value, false);
  } else if (name == "displayName") {
    parameter.displayName = value;
  } else if (name == "aeDisplayName") {
    parameter.aeDisplayName = value;
  } else if (name == "enumValues") {
    parameter.enumValues = value;
  } else if (name == "aePopupString") {
    parameter.aePopupString = value;
  } else if (name == "aePointRelativeDefaultValue") {
    parameter.aePointRelativeDefaultValue =
        relativePointOf(valueOfText(value, pbElementType::Float2));
  }
}

void readParameter(const TiXmlElement& element, pbGraphInfo& info) {
  if (!element.Attribute("name") || !element.Attribute("type")) return;
  pbParameter parameter(typeFromName(attribute(element, "type")), attribute(element, "name"));
  parameter.sourceName = parameter.name.view();
  forEachChild(element, "metadata",
               [&](const TiXmlElement& entry) { readParameterMetadata(entry, parameter); });
  info.parameters.push_back(std::move(parameter));
}

pbVariable readImage(const TiXmlElement& element) {
  return {typeFromName(attribute(element, "type")), attribute(element, "name")};
}

void readNode(const TiXmlElement& element, pbGraphInfo& info) {
  pbgNodeInfo node;
  node.id = attribute(element, "id");
  node.name = attribute(element, "name");
  node.nameSpace = attribute(element, "namespace");
  node.vendor = attribute(element, "vendor");
  node.clientID = attribute(element, "clientID");
  node.version = integerOr1(element, "version");
  if (const TiXmlElement* function = element.FirstChildElement("evaluateParameters")) {
    if (const TiXmlText* text = leadingText(*function)) {
      node.evaluateParametersSource = text->Value();
    }
  }
  info.nodes.push_back(std::move(node));
}

void readConnection(const TiXmlElement& element, pbGraphInfo& info) {
  pbgConnection connection;
  const char* fromImage = element.Attribute("fromImage");
  if (fromImage) {
    connection.from = fromImage;
  } else {
    connection.from = attribute(element, "fromNode");
    connection.fromOutput = attribute(element, "fromOutput");
  }
  if (const char* toImage = element.Attribute("toImage")) {
    connection.to = toImage;
    connection.kind = ConnectionKind::ToOutput;
  } else {
    connection.to = attribute(element, "toNode");
    connection.toInput = attribute(element, "toInput");
    connection.kind = fromImage ? ConnectionKind::ImageToNode : ConnectionKind::NodeToNode;
  }
  info.connections.push_back(connection);
}

/// Parses the kernels and rewrites the nodes' functions, once everything has been read.
void resolve(pbGraphInfo& info) {
  RecordBudget budget;
  info.kernels.clear();
  info.kernels.resize(info.kernelSources.size());
  for (std::size_t i = 0; i < info.kernels.size(); ++i) {
    PBKParser(info.kernelSources[i], &budget).parse(info.kernels[i]);
  }
  const GraphParameterNames parameterNames(info);
  for (pbgNodeInfo& node : info.nodes)
    node.parse(parameterNames);
}

/// The file up to its first zero byte with every line end made a line feed; one character more than
/// the limit when it is longer. Empty when it cannot be read.
std::string readFile(const char* path) {
  const std::string_view name = path;
  // A plain string would be read in the code page of a Windows machine.
  const std::filesystem::path wide(std::u8string(name.begin(), name.end()));
  std::ifstream file(wide, std::ios::binary);
  std::string text(kGraphTextLimit + 1, '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(file.gcount()));
  if (text.size() > kGraphTextLimit) return text;
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size() && text[i] != '\0'; ++i) {
    if (text[i] != '\r') {
      result += text[i];
    } else if (i + 1 == text.size() || text[i + 1] != '\n') {
      result += '\n';
    }
  }
  return result;
}

}  // namespace

int readGraphText(const char* text, pbGraphInfo& info) {
  TiXmlDocument document;
  if (!text || !buildDocument(text, document)) return 1;
  return readGraphDocument(document, info);
}

int readGraphFile(const char* path, pbGraphInfo& info) {
  TiXmlDocument document;
  if (!buildDocument(readFile(path), document) || document.Error()) return 1;
  return readGraphDocument(document, info);
}

int readGraphDocument(const TiXmlDocument& document, pbGraphInfo& info) {
  const TiXmlElement* root = document.FirstChildElement("graph");
  if (!root) return 1;
  info.name = attribute(*root, "name");
  info.languageVersion = integerOr1(*root, "languageVersion");
  forEachChild(*root, "metadata", [&](const TiXmlElement& e) { readMetadata(e, info); });
  forEachChild(*root, "parameter", [&](const TiXmlElement& e) { readParameter(e, info); });
  forEachChild(*root, "inputImage",
               [&](const TiXmlElement& e) { info.inputs.push_back(readImage(e)); });
  if (const TiXmlElement* image = root->FirstChildElement("outputImage")) {
    info.output = readImage(*image);
  }
  forEachChild(*root, "kernel", [&](const TiXmlElement& e) {
    if (const TiXmlText* text = leadingText(e)) info.kernelSources.emplace_back(text->Value());
  });
  forEachChild(*root, "node", [&](const TiXmlElement& e) { readNode(e, info); });
  forEachChild(*root, "connect", [&](const TiXmlElement& e) { readConnection(e, info); });
  resolve(info);
  return 0;
}

}  // namespace vellumtide
