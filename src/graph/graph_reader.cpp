#include "graph/graph_reader.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>

#include "graph/graph_document.h"
#include "graph/graph_limits.h"
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

pbParameter readParameter(const TiXmlElement& element) {
  pbParameter parameter(typeFromName(attribute(element, "type")), attribute(element, "name"));
  forEachChild(element, "metadata",
               [&](const TiXmlElement& entry) { readParameterMetadata(entry, parameter); });
  return parameter;
}

pbVariable readImage(const TiXmlElement& element) {
  return {typeFromName(attribute(element, "type")), attribute(element, "name")};
}

pbgNodeInfo readNode(const TiXmlElement& element) {
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
  return node;
}

pbgConnection readConnection(const TiXmlElement& element) {
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
    connection.fullToInput = attribute(element, "toInput");
    connection.toInput = connection.fullToInput;
    connection.kind = fromImage ? ConnectionKind::ImageToNode : ConnectionKind::NodeToNode;
  }
  return connection;
}

/// Reads what stands in the root element, until a limit is met.
class RootReader {
 public:
  RootReader(const TiXmlElement& root, pbGraphInfo& info) : root_(root), info_(info) {}

  void read() {
    info_.name = attribute(root_, "name");
    info_.languageVersion = integerOr1(root_, "languageVersion");
    forEach("metadata", [&](const TiXmlElement& e) { readMetadata(e, info_); });
    forEach("parameter", [&](const TiXmlElement& e) {
      if (e.Attribute("name") && e.Attribute("type")) addParameter(readParameter(e));
    });
    forEach("inputImage", [&](const TiXmlElement& e) { addNode(info_.inputs, readImage(e)); });
    if (const TiXmlElement* image = root_.FirstChildElement("outputImage")) {
      info_.output = readImage(*image);
    }
    forEach("kernel", [&](const TiXmlElement& e) {
      if (const TiXmlText* text = leadingText(e)) addKernelSource(text->Value());
    });
    forEach("node", [&](const TiXmlElement& e) { addNode(info_.nodes, readNode(e)); });
    forEach("connect", [&](const TiXmlElement& e) {
      if (takeRecord(sizeof(pbgConnection))) info_.connections.push_back(readConnection(e));
    });
    resolve();
    if (!isRefused()) info_.beyond = limitOfNodes(info_);
  }

 private:
  bool isRefused() const { return info_.beyond != Limit::None; }

  template <typename Visit>
  void forEach(const char* name, Visit visit) {
    forEachChild(root_, name, [&](const TiXmlElement& element) {
      if (!isRefused()) visit(element);
    });
  }

  /// False, with the graph refused, when there is no room for a record.
  bool takeRecord(std::size_t bytes) {
    if (!budget_.take(bytes)) info_.beyond = Limit::RecordBytes;
    return !isRefused();
  }

  void addParameter(pbParameter parameter) {
    const std::size_t texts = parameter.enumValues.size() + parameter.aePopupString.size();
    if (takeRecord(sizeof(pbParameter) + texts)) info_.parameters.push_back(std::move(parameter));
  }

  template <typename T>
  void addNode(std::vector<T>& list, T record) {
    if (info_.inputs.size() + info_.nodes.size() == limits::kGraphNodes) {
      info_.beyond = Limit::GraphNodes;
    } else {
      list.push_back(std::move(record));
    }
  }

  void addKernelSource(const char* source) {
    if (takeRecord(sizeof(pbKernelInfo))) info_.kernelSources.emplace_back(source);
  }

  /// Parses the kernels and rewrites the nodes' functions, once everything has been read.
  void resolve() {
    info_.kernels.clear();
    info_.kernels.resize(info_.kernelSources.size());
    for (std::size_t i = 0; i < info_.kernels.size() && !isRefused(); ++i) {
      PBKParser(info_.kernelSources[i], &budget_).parse(info_.kernels[i]);
      info_.beyond = info_.kernels[i].beyond;
    }
    const GraphParameterNames parameterNames(info_);
    for (pbgNodeInfo& node : info_.nodes)
      node.parse(parameterNames);
  }

  const TiXmlElement& root_;
  pbGraphInfo& info_;
  RecordBudget budget_;
};

int refuse(pbGraphInfo& info, Limit beyond) {
  info = pbGraphInfo();
  info.beyond = beyond;
  return 1;
}

/// The file up to its first zero byte with every line end made a line feed; one character more than
/// the limit when it is longer. Empty when it cannot be read.
std::string readFile(const char* path) {
  const std::string_view name = path;
  // A plain string would be read in the code page of a Windows machine.
  const std::filesystem::path wide(std::u8string(name.begin(), name.end()));
  std::ifstream file(wide, std::ios::binary);
  std::string text(limits::kTextBytes + 1, '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(file.gcount()));
  if (text.size() > limits::kTextBytes) return text;
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
  if (!text) return 1;
  TiXmlDocument document;
  const Limit beyond = buildDocument(text, document);
  return beyond == Limit::None ? readGraphDocument(document, info) : refuse(info, beyond);
}

int readGraphFile(const char* path, pbGraphInfo& info) {
  TiXmlDocument document;
  const Limit beyond = buildDocument(readFile(path), document);
  if (beyond != Limit::None) return refuse(info, beyond);
  return document.Error() ? 1 : readGraphDocument(document, info);
}

int readGraphDocument(const TiXmlDocument& document, pbGraphInfo& info) {
  const TiXmlElement* root = document.FirstChildElement("graph");
  if (!root) return 1;
  RootReader(*root, info).read();
  return info.beyond == Limit::None ? 0 : refuse(info, info.beyond);
}

}  // namespace vellumtide
