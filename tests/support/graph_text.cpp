#include "tests/support/graph_text.h"

#include <sstream>

namespace vellumtide::end_to_end {
namespace {

std::string attribute(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + value + "\"";
}

}  // namespace

GraphText& GraphText::parameter(const std::string& name, const std::string& type,
                                const std::string& defaultValue) {
  return raw("<parameter" + attribute("name", name) + attribute("type", type) +
             "><metadata name=\"defaultValue\"" + attribute("value", defaultValue) +
             "/></parameter>");
}

GraphText& GraphText::kernel(const std::string& source) {
  return raw("<kernel><![CDATA[" + source + "]]></kernel>");
}

GraphText& GraphText::node(const std::string& id, const std::string& kernelName,
                           const std::string& statements) {
  raw("<node" + attribute("id", id) + attribute("name", kernelName) + ">");
  if (!statements.empty()) {
    raw("<evaluateParameters><![CDATA[\nvoid evaluateParameters()\n{\n\t" + statements +
        "\n}\n]]></evaluateParameters>");
  }
  return raw("</node>");
}

GraphText& GraphText::wire(const std::string& words) {
  std::istringstream stream(words);
  for (std::string word; stream >> word;) {
    const std::size_t sign = word.find_first_of("=>");
    const std::string left = word.substr(0, sign), right = word.substr(sign + 1);
    if (word[sign] == '>') {
      addConnection(left, right);
    } else if (right != "image") {
      node(left, right);
    } else {
      images_.insert(left);
      raw("<inputImage type=\"image4\"" + attribute("name", left) + "/>");
    }
  }
  return *this;
}

void GraphText::addConnection(const std::string& from, const std::string& to) {
  const std::string start =
      "<connect" + (images_.count(from) ? attribute("fromImage", from)
                                        : attribute("fromNode", from) + " fromOutput=\"dst\"");
  if (to == "out") {
    raw("<outputImage type=\"image4\" name=\"result\"/>" + start + " toImage=\"result\"/>");
  } else {
    const std::size_t dot = to.find('.');
    raw(start + attribute("toNode", to.substr(0, dot)) + attribute("toInput", to.substr(dot + 1)) +
        "/>");
  }
}

GraphText& GraphText::raw(const std::string& xml) {
  elements_ += xml + "\n";
  return *this;
}

std::string GraphText::str() const {
  return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<graph" + attribute("name", name_) +
         " languageVersion=\"1.0\">\n" + elements_ + "</graph>\n";
}

GraphText chain(int nodes, const std::string& step) {
  GraphText graph("chain");
  graph.kernel(step).wire("src=image");
  std::string last = "src";
  for (int i = 0; i < nodes; ++i) {
    const std::string id = "n" + std::to_string(i);
    graph.wire(id + "=Step " + last + ">" + id + ".src");
    last = id;
  }
  return graph.wire(last + ">out");
}

GraphText ladder(int rungs, const std::string& rung) {
  GraphText graph("ladder");
  graph.kernel(rung).wire("src=image");
  std::string left = "src", right = "src";
  for (int i = 0; i < rungs; ++i) {
    const std::string number = std::to_string(i);
    for (const std::string& id : {"left" + number, "right" + number})
      graph.wire(id + "=Rung " + left + ">" + id + ".a " + right + ">" + id + ".b");
    left = "left" + number;
    right = "right" + number;
  }
  return graph.wire(left + ">out");
}

}  // namespace vellumtide::end_to_end
