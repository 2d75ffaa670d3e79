#include "cli/program/graph_drawing.h"

#include <map>

#include "bank/control_labels.h"
#include "cli/program/parameter_text.h"
#include "headless/utf8.h"

namespace vellumtide::cli {
namespace {

constexpr const char* kInk = "#1f2430";
constexpr const char* kFaint = "#7a8191";
constexpr std::size_t kLongestText = 40;  // characters of an expression or a value

// For HTML-like labels: markup is escaped, control characters become blanks.
std::string escaped(std::string_view text, std::size_t most = std::string_view::npos) {
  std::string result;
  for (std::size_t count = 0; !text.empty(); ++count) {
    if (count == most) return result + "&#8230;";
    const std::string_view rest = text;
    const char32_t character = headless::takeCharacter(text);
    const std::string_view bytes = rest.substr(0, rest.size() - text.size());
    if (character == '&') {
      result += "&amp;";
    } else if (character == '<') {
      result += "&lt;";
    } else if (character == '>') {
      result += "&gt;";
    } else if (character == '"') {
      result += "&quot;";
    } else if (character < 0x20 || (character >= 0x7F && character < 0xA0)) {
      result += ' ';
    } else if (character == headless::kReplacementCharacter || (character & 0xFFFE) == 0xFFFE) {
      result += "&#65533;";
    } else {
      result += bytes;
    }
  }
  return result;
}

std::string bold(const std::string& html) {
  return "<B>" + (html.empty() ? "&#160;" : html) + "</B>";
}

std::string faint(const std::string& html, int size = 10) {
  if (html.empty()) return "";
  return "<FONT COLOR=\"" + std::string(kFaint) + "\" POINT-SIZE=\"" + std::to_string(size) +
         "\">" + html + "</FONT>";
}

// A node as a table of two columns under a heading.
class Card {
 public:
  Card(const std::string& heading, const std::string& subheading, const std::string& color)
      : color_(color) {
    rows_ = "<TR><TD COLSPAN=\"2\" CELLPADDING=\"5\"><FONT COLOR=\"" + color + "\">" +
            bold(heading) + "</FONT>" + (subheading.empty() ? "" : "&#160; " + faint(subheading)) +
            "</TD></TR>";
  }

  void rule() { rows_ += "<HR/>"; }

  // Ports are names of this program's own; "" for none.
  void row(const std::string& left, const std::string& leftPort, const std::string& right,
           const std::string& rightPort) {
    rows_ += "<TR>" + cell(left, leftPort, "LEFT") + cell(right, rightPort, "RIGHT") + "</TR>";
  }

  std::string text(const std::string& name) const {
    return "  " + name + " [label=<<TABLE BORDER=\"1\" CELLBORDER=\"0\" CELLSPACING=\"0\"" +
           " CELLPADDING=\"4\" STYLE=\"ROUNDED\" BGCOLOR=\"white\" COLOR=\"" + color_ + "\">" +
           rows_ + "</TABLE>>];\n";
  }

 private:
  static std::string cell(const std::string& html, const std::string& port, const char* align) {
    return "<TD ALIGN=\"" + std::string(align) + "\"" +
           (port.empty() ? "" : " PORT=\"" + port + "\"") + ">" + (html.empty() ? " " : html) +
           "</TD>";
  }

  std::string color_, rows_;
};

constexpr const char* kKernelColor = "#3f51b5";
constexpr const char* kInputColor = "#2e7d5b";
constexpr const char* kOutputColor = "#b3541e";
constexpr const char* kParameterColor = "#6b4fa0";
constexpr const char* kMissingColor = "#c62828";

std::string dotOf(const char* color) {
  return "<FONT COLOR=\"" + std::string(color) + "\">&#9679;</FONT>";
}

std::string typeText(pbElementType type) {
  return faint(escaped(typeName(type)));
}

std::string number(std::size_t value) {
  return std::to_string(value);
}

// What a node's function gives its parameter: "reach * 2.0" of "id::reach = reach * 2.0;".
std::string expressionFor(const pbgNodeInfo& node, std::string_view parameter) {
  const std::string& source = node.evaluateParametersSource;
  const std::string target = node.id.str() + "::" + std::string(parameter);
  for (std::size_t at = source.find(target); at != std::string::npos;
       at = source.find(target, at + 1)) {
    const std::size_t equals = source.find_first_not_of(" \t\r\n", at + target.size());
    if (equals == std::string::npos || source[equals] != '=') continue;
    const std::size_t end = source.find(';', equals);
    const std::size_t start = source.find_first_not_of(" \t\r\n", equals + 1);
    if (end == std::string::npos || start >= end) continue;
    return source.substr(start, end - start);
  }
  return "";
}

void addPorts(Card& card, const pbKernelInfo& kernel) {
  const std::size_t rows = std::max<std::size_t>(kernel.inputs.size(), 1);
  for (std::size_t i = 0; i < rows; ++i) {
    std::string left, right;
    if (i < kernel.inputs.size()) {
      const pbVariable& input = kernel.inputs[i];
      left = dotOf(kInputColor) + "&#160;" + escaped(input.name) + "&#160; " + typeText(input.type);
    }
    if (i == 0) {
      right = "&#160; " + typeText(kernel.output.type) + "&#160; " + escaped(kernel.output.name) +
              "&#160;" + dotOf(kOutputColor);
    }
    card.row(left, left.empty() ? "" : "i" + number(i), right, i == 0 ? "o" : "");
  }
}

// Name and type of each parameter, and what it is: its range, or where its value comes from.
void addParameters(Card& card, const std::vector<pbParameter>& parameters,
                   const pbgNodeInfo* node) {
  if (!parameters.empty()) card.rule();
  for (const pbParameter& parameter : parameters) {
    const std::string expression = node ? expressionFor(*node, parameter.name) : "";
    const std::string name = node ? parameter.name.str() : controlLabel(parameter, 0, 1);
    const bool hasDefault =
        parameter.defaultValue.isSet || parameter.aePointRelativeDefaultValue.isSet;
    const std::string value = !expression.empty() ? "= " + escaped(expression, kLongestText)
                              : hasDefault        ? escaped(defaultText(parameter), kLongestText)
                                                  : "";
    card.row(escaped(name) + "&#160; " + typeText(parameter.type), "",
             value.empty() ? "" : "&#160; " + faint(value, 11), "");
  }
}

class Drawing {
 public:
  explicit Drawing(const pbMetadata& metadata) {
    text_ =
        "digraph program {\n"
        "  graph [rankdir=LR, bgcolor=\"#f6f7f9\", pad=0.3, nodesep=0.3, ranksep=0.8,\n"
        "         fontname=\"DejaVu Sans,Verdana,sans-serif\", fontsize=12, fontcolor=\"" +
        std::string(kInk) +
        "\",\n"
        "         labelloc=t, labeljust=l, label=<<FONT POINT-SIZE=\"17\">" +
        bold(escaped(metadata.name)) + "</FONT>" +
        (metadata.description.empty()
             ? ""
             : "&#160;&#160; " + faint(escaped(metadata.description, 160), 12)) +
        "<BR/> >];\n"
        "  node [shape=plain, fontname=\"DejaVu Sans,Verdana,sans-serif\", fontsize=12,\n"
        "        fontcolor=\"" +
        std::string(kInk) +
        "\"];\n"
        "  edge [color=\"#5b6475\", penwidth=1.4, arrowsize=0.7];\n";
  }

  void add(const std::string& name, const Card& card) { text_ += card.text(name); }
  void connect(const std::string& from, const std::string& to) {
    text_ += "  " + from + " -> " + to + ";\n";
  }
  // Something that is named and not there.
  std::string missing(std::string_view what, std::string_view name) {
    const std::string id = "missing" + number(missing_++);
    add(id, Card(escaped(name), "there is no such " + escaped(what), kMissingColor));
    return id;
  }
  std::string text() const { return text_ + "}\n"; }

 private:
  std::string text_;
  std::size_t missing_ = 0;
};

std::string kernelDrawing(const pbKernelInfo& kernel) {
  Card card(escaped(kernel.name), "version " + std::to_string(kernel.version), kKernelColor);
  card.rule();
  addPorts(card, kernel);
  addParameters(card, kernel.parameters, nullptr);
  Drawing drawing(kernel);
  drawing.add("kernel", card);
  return drawing.text();
}

class GraphDrawing {
 public:
  explicit GraphDrawing(const pbGraphInfo& graph)
      : graph_(graph), kernels_(graph), drawing_(graph) {}

  std::string text() {
    addImages();
    addNodes();
    for (const pbgConnection& connection : graph_.connections)
      addConnection(connection);
    return drawing_.text();
  }

 private:
  void addImages() {
    for (std::size_t i = 0; i < graph_.inputs.size(); ++i) {
      const pbVariable& input = graph_.inputs[i];
      const std::string name = "input" + number(i);
      drawing_.add(name, Card(escaped(input.name), escaped(typeName(input.type)), kInputColor));
      images_.emplace(input.name.str(), name);
    }
    if (!graph_.parameters.empty()) {
      Card card("Parameters", "", kParameterColor);
      addParameters(card, graph_.parameters, nullptr);
      drawing_.add("parameters", card);
    }
    drawing_.add("output", Card(escaped(graph_.output.name), escaped(typeName(graph_.output.type)),
                                kOutputColor));
  }

  void addNodes() {
    for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
      const pbgNodeInfo& node = graph_.nodes[i];
      const std::string name = "node" + number(i);
      const pbKernelInfo* kernel = kernels_.find(node.name.view());
      Card card(escaped(node.name), escaped(node.id), kernel ? kKernelColor : kMissingColor);
      card.rule();
      if (kernel) {
        addPorts(card, *kernel);
        addParameters(card, kernel->parameters, &node);
      } else {
        card.row("there is no such kernel", "", "", "");
      }
      drawing_.add(name, card);
      nodes_.emplace(node.id.str(), Node{name, kernel});
    }
  }

  void addConnection(const pbgConnection& connection) {
    drawing_.connect(sourceOf(connection), targetOf(connection));
  }

  std::string sourceOf(const pbgConnection& connection) {
    const std::string from = connection.from.str();
    const auto image = images_.find(from);
    if (connection.kind == ConnectionKind::ImageToNode && image != images_.end()) {
      return image->second;
    }
    const auto node = nodes_.find(from);
    if (node == nodes_.end()) {
      const bool isImage = connection.kind == ConnectionKind::ImageToNode;
      if (!isImage && image != images_.end()) return image->second;
      return drawing_.missing(isImage ? "image" : "node", from);
    }
    return node->second.name + (node->second.kernel ? ":o:e" : "");
  }

  std::string targetOf(const pbgConnection& connection) {
    if (connection.kind == ConnectionKind::ToOutput) return "output";
    const auto node = nodes_.find(connection.to.str());
    if (node == nodes_.end()) return drawing_.missing("node", connection.to.view());
    if (!node->second.kernel) return node->second.name;
    const std::vector<pbVariable>& inputs = node->second.kernel->inputs;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
      if (inputs[i].name == connection.toInput) return node->second.name + ":i" + number(i) + ":w";
    }
    return drawing_.missing("input of " + connection.to.str(), connection.toInput.view());
  }

  struct Node {
    std::string name;
    const pbKernelInfo* kernel;
  };

  const pbGraphInfo& graph_;
  KernelsByName kernels_;
  Drawing drawing_;
  std::map<std::string, std::string> images_;
  std::map<std::string, Node> nodes_;
};

}  // namespace

std::string graphvizText(const Program& program) {
  if (const pbGraphInfo* graph = program.graph()) return GraphDrawing(*graph).text();
  return kernelDrawing(*program.kernel());
}

}  // namespace vellumtide::cli
