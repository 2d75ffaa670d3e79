#include "tests/end_to_end/support/graph_text.h"

namespace vellumtide::end_to_end {
namespace {

std::string attribute(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + value + "\"";
}

}  // namespace

GraphText& GraphText::parameter(const std::string& name, const std::string& type,
                                const std::string& defaultValue) {
  const std::string value = defaultValue.empty() ? ""
                                                 : "<metadata name=\"defaultValue\"" +
                                                       attribute("value", defaultValue) + "/>";
  return raw("<parameter" + attribute("name", name) + attribute("type", type) + ">" + value +
             "</parameter>");
}

GraphText& GraphText::input(const std::string& name) {
  return raw("<inputImage type=\"image4\"" + attribute("name", name) + "/>");
}

GraphText& GraphText::kernel(const std::string& source) {
  return raw("<kernel><![CDATA[" + source + "]]></kernel>");
}

GraphText& GraphText::node(const std::string& id, const std::string& kernelName,
                           const std::string& statements) {
  const std::string function =
      statements.empty() ? ""
                         : "<evaluateParameters><![CDATA[\nvoid evaluateParameters()\n{\n\t" +
                               statements + "\n}\n]]></evaluateParameters>";
  return raw("<node" + attribute("id", id) + attribute("name", kernelName) + ">" + function +
             "</node>");
}

GraphText& GraphText::connectImage(const std::string& image, const std::string& to,
                                   const std::string& input) {
  return raw("<connect" + attribute("fromImage", image) + attribute("toNode", to) +
             attribute("toInput", input) + "/>");
}

GraphText& GraphText::connect(const std::string& from, const std::string& to,
                              const std::string& input) {
  return raw("<connect" + attribute("fromNode", from) + " fromOutput=\"dst\"" +
             attribute("toNode", to) + attribute("toInput", input) + "/>");
}

GraphText& GraphText::output(const std::string& from) {
  return raw("<outputImage type=\"image4\" name=\"result\"/><connect" +
             attribute("fromNode", from) + " fromOutput=\"dst\" toImage=\"result\"/>");
}

GraphText& GraphText::raw(const std::string& xml) {
  elements_ += xml + "\n";
  return *this;
}

std::string GraphText::str() const {
  return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<graph" + attribute("name", name_) +
         " languageVersion=\"1.0\">\n" + elements_ + "</graph>\n";
}

std::string chainText(int count, const std::string& step) {
  GraphText graph("chain");
  graph.input("src").kernel(step);
  std::string last;
  for (int i = 0; i < count; ++i) {
    const std::string id = "n" + std::to_string(i);
    graph.node(id, "Step");
    i == 0 ? graph.connectImage("src", id) : graph.connect(last, id);
    last = id;
  }
  return graph.output(last).str();
}

std::string ladderText(int rungs, const std::string& rung) {
  GraphText graph("ladder");
  graph.input("src").kernel(rung);
  for (int i = 0; i < rungs; ++i) {
    const std::string number = std::to_string(i), before = std::to_string(i - 1);
    for (const char* side : {"left", "right"}) {
      const std::string id = side + number;
      graph.node(id, "Rung");
      if (i == 0) {
        graph.connectImage("src", id, "a").connectImage("src", id, "b");
      } else {
        graph.connect("left" + before, id, "a").connect("right" + before, id, "b");
      }
    }
  }
  return graph.output("left" + std::to_string(rungs - 1)).str();
}

}  // namespace vellumtide::end_to_end
