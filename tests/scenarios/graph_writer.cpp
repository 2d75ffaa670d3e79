#include <list>

#include "tests/scenarios/program_writer.h"

namespace vellumtide::scenarios {
namespace {

using Words = std::vector<std::string>;

std::string attribute(const std::string& name, const std::string& value) {
  std::string text = " " + name + "=\"";
  for (const char c : value)
    text += c == '<' ? "&lt;" : c == '&' ? "&amp;" : c == '"' ? "&quot;" : std::string(1, c);
  return text + "\"";
}

struct GraphNode {
  std::string id;
  const KernelText* kernel;
};

class GraphWriter {
 public:
  explicit GraphWriter(Dice& dice) : dice_(dice) {}

  std::vector<ProgramLine> write() {
    line("<graph" + attribute("name", anyText(dice_)) + " languageVersion=\"1.0\">");
    line("<metadata name=\"description\"" + attribute("value", anyText(dice_)) + "/>");
    parameters();
    images();
    kernels();
    nodes();
    connections();
    output();
    line("</graph>");
    return std::move(lines_);
  }

 private:
  void line(const std::string& text) { lines_.push_back({text, 1}); }

  void parameters() {
    for (int i = dice_.between(0, 3); i > 0; --i) {
      const std::string type =
          dice_.pick(Words{"float", "float", "int", "bool", "float2", "float4"});
      parameters_.emplace_back(type, identifier(dice_, 'g'));
      line("<parameter" + attribute("type", type) + attribute("name", parameters_.back().second) +
           ">");
      for (const auto& [key, value] : metadata(dice_, type, true))
        line("<metadata" + attribute("name", key) + attribute("value", value) + "/>");
      line("</parameter>");
    }
  }

  void images() {
    const int count = dice_.oneIn(20) ? 6 : dice_.between(1, 3);
    for (int i = 0; i < count; ++i) {
      images_.push_back(dice_.oneIn(3) ? identifier(dice_, 'i') : "image" + std::to_string(i));
      line("<inputImage type=\"image4\"" + attribute("name", images_.back()) + "/>");
    }
    line("<outputImage type=\"image4\" name=\"out\"/>");
  }

  void kernels() {
    for (int i = dice_.between(1, 2); i > 0; --i) {
      kernels_.push_back(writeKernel(
          dice_, dice_.oneIn(8) ? identifier(dice_, 'K') : "Kernel" + std::to_string(i)));
      line("<kernel><![CDATA[");
      lines_.insert(lines_.end(), kernels_.back().lines.begin(), kernels_.back().lines.end());
      line("]]></kernel>");
    }
  }

  void nodes() {
    const int count = dice_.oneIn(15) ? dice_.between(10, 40) : dice_.between(1, 5);
    for (int i = 0; i < count; ++i) {
      nodes_.push_back({dice_.oneIn(8) ? identifier(dice_, 'n') : "node" + std::to_string(i),
                        &dice_.pick(kernels_)});
      const GraphNode& node = nodes_.back();
      const std::string kernel = dice_.oneIn(60) ? "Missing" : node.kernel->name;
      std::string statements;
      for (const auto& [type, name] : node.kernel->parameters)
        statements += node.id + "::" + name + " = " + valueFor(type) + "; ";
      line("<node" + attribute("id", node.id) + attribute("name", kernel) +
           " vendor=\"v\" namespace=\"n\" version=\"1\"><evaluateParameters><![CDATA[" +
           "void evaluateParameters() { " + statements + "}]]></evaluateParameters></node>");
    }
  }

  // A value of a type from the graph's parameters, or a number.
  std::string valueFor(const std::string& type) {
    for (const auto& [known, name] : parameters_)
      if (known == type && dice_.oneIn(2)) return name;
    const bool isMatrix = type.starts_with("float") && type.find('x') != std::string::npos;
    if (type.starts_with("bool")) return type + "(" + dice_.pick(Words{"true", "false"}) + ")";
    return type + "(" + (isMatrix ? dice_.number(0, 1) : dice_.number(-2, 2)) + ")";
  }

  void connect(const std::string& from, int toNode, const std::string& input) {
    line("<connect" + from + attribute("toNode", nodes_[static_cast<std::size_t>(toNode)].id) +
         attribute("toInput", input) + "/>");
  }
  std::string fromNode(int node) const {
    return attribute("fromNode", nodes_[static_cast<std::size_t>(node)].id) + " fromOutput=\"dst\"";
  }
  std::string fromImage() { return attribute("fromImage", dice_.pick(images_)); }

  void connections() {
    const int shape = dice_.below(3);  // a chain, a diamond with node 0 on top, anything
    const int count = static_cast<int>(nodes_.size());
    for (int i = 0; i < count; ++i) {
      for (const std::string& input : nodes_[static_cast<std::size_t>(i)].kernel->inputs) {
        if (dice_.oneIn(25)) continue;
        const int before = shape == 0 ? i - 1 : shape == 1 ? 0 : dice_.below(i + 1);
        const bool isNode = i > 0 && before < i && !dice_.oneIn(4);
        connect(isNode ? fromNode(before) : fromImage(), i, input);
        if (dice_.oneIn(25)) connect(fromImage(), i, input);
        if (dice_.oneIn(50)) connect(fromNode(dice_.below(count)), i, input);
        if (dice_.oneIn(25)) connect(fromImage(), i, "nowhere");
      }
    }
  }

  void output() {
    const int last = static_cast<int>(nodes_.size()) - 1;
    if (dice_.oneIn(25)) return;
    if (dice_.oneIn(8)) line("<connect" + fromImage() + " toImage=\"out\"/>");
    const int node = dice_.oneIn(8) ? dice_.below(last + 1) : last;
    line("<connect" + (dice_.oneIn(10) ? fromImage() : fromNode(node)) + " toImage=\"out\"/>");
  }

  Dice& dice_;
  std::vector<ProgramLine> lines_;
  std::vector<std::pair<std::string, std::string>> parameters_;
  Words images_;
  std::list<KernelText> kernels_;
  std::vector<GraphNode> nodes_;
};

// Small files that ask for much: copies of every element a program can have.
std::vector<ProgramLine> writeCrowd(Dice& dice) {
  const auto many = [&] { return dice.pick({1, 1, 30, 900, 4000, 40000}); };
  const int nodes = dice.pick({1, 30, 900, 4000});
  return {{"<graph name=\"crowd\">", 1},
          {"<parameter type=\"float\" name=\"g#\"/>", many()},
          {"<inputImage type=\"image4\" name=\"a#\"/>", many()},
          {"<outputImage type=\"image4\" name=\"out\"/>", 1},
          {"<kernel><![CDATA[ kernel Many <> {", 1},
          {"input image4 in#;", many()},
          {"output pixel4 dst;", 1},
          {"parameter float p#;", many()},
          {"void evaluatePixel() { dst = float4(0.5); }", 1},
          {"} ]]></kernel>", 1},
          {"<node id=\"n#\" name=\"Many\"/>", nodes},
          {"<connect fromImage=\"a0\" toNode=\"n0\" toInput=\"in#\"/>", many()},
          {"<connect fromNode=\"n0\" toImage=\"out\"/>", 1},
          {"</graph>", 1}};
}

}  // namespace

std::vector<ProgramLine> writeGraph(Dice& dice) {
  return GraphWriter(dice).write();
}

ProgramFile writeFile(Dice& dice, int number) {
  const bool isGraph = dice.oneIn(2);
  ProgramFile file{(isGraph ? "g" : "k") + std::to_string(number) + (isGraph ? ".pbg" : ".pbk"),
                   {}};
  if (dice.oneIn(10)) file.name = identifier(dice, 'f') + file.name;
  if (dice.oneIn(60)) return {"crowd.pbg", writeCrowd(dice)};
  file.lines = isGraph ? writeGraph(dice) : writeKernel(dice, identifier(dice, 'K')).lines;
  const int size = static_cast<int>(file.lines.size());
  if (dice.oneIn(15)) file.lines.resize(static_cast<std::size_t>(dice.below(size)));
  if (dice.oneIn(30))
    file.lines.insert(file.lines.begin() + dice.below(static_cast<int>(file.lines.size()) + 1),
                      {anyText(dice), 1});
  if (dice.oneIn(30)) file.name.back() = dice.pick({'K', 'G', 'x'});
  return file;
}

}  // namespace vellumtide::scenarios
