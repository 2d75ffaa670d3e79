#include "cli/build_errors/build_errors.h"

#include <algorithm>

#include "cli/build_errors/program_shaders.h"
#include "cli/build_errors/shader_lines.h"
#include "kernel/characters.h"

namespace vellumtide::cli {
namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";
constexpr std::size_t kGeneratedWidth = 110;
constexpr std::size_t kMessageWidth = 500;
constexpr std::size_t kNamedNodes = 3;

// The first place of a whole word.
std::size_t findWord(std::string_view text, std::string_view word) {
  std::size_t at = text.find(word);
  for (; at != text.npos; at = text.find(word, at + 1)) {
    const bool begins = at == 0 || !isWordCharacter(text[at - 1]);
    const std::size_t end = at + word.size();
    if (begins && (end == text.size() || !isWordCharacter(text[end]))) break;
  }
  return at;
}

// Where a message of one stage of one node belongs.
class Locator {
 public:
  Locator(const NodeShaders& shaders, ShaderStage stage)
      : shaders_(shaders), stage_(stage), text_(shaders.text(stage)) {}

  std::optional<std::size_t> fileOffset(const DriverMessage& message) const {
    const auto line = lineOf(message);
    if (!line) return std::nullopt;
    if (const auto at = columnOf(message, *line)) return offsetOf(*at, message);
    const std::string_view text = textOf(*line);
    for (const std::string& name : quotedNames(message.text)) {
      const std::size_t at = findWord(text, name);
      if (at == text.npos) continue;
      if (const auto offset = shaders_.fileOffset(stage_, line->begin + at)) return offset;
    }
    for (std::size_t at = text.find_first_not_of(kBlanks); at < text.size(); ++at) {
      if (const auto offset = offsetOf(line->begin + at, message)) return offset;
    }
    return offsetOf(line->end, message);
  }

  bool countsOwnLines() const { return setsItsLines(text_); }

  std::string generatedText(const DriverMessage& message) const {
    const auto line = lineOf(message);
    return line ? std::string(textOf(*line)) : "";
  }

 private:
  std::string_view textOf(const TextSpan& line) const {
    return std::string_view(text_).substr(line.begin, line.end - line.begin);
  }

  std::optional<TextSpan> lineOf(const DriverMessage& message) const {
    if (message.line < 1 || setsItsLines(text_)) return std::nullopt;
    return shaderLine(text_, message.line);
  }

  std::optional<std::size_t> columnOf(const DriverMessage& message, const TextSpan& line) const {
    if (message.column < 1) return std::nullopt;
    if (message.columns == DriverMessage::Columns::Expanded) {
      return findAfterPreprocessing(text_, message.line, message.column);
    }
    const std::size_t at = line.begin + static_cast<std::size_t>(message.column) - 1;
    return at < line.end ? std::optional(at) : std::nullopt;
  }

  std::optional<std::size_t> offsetOf(std::size_t at, const DriverMessage& message) const {
    if (const auto offset = shaders_.fileOffset(stage_, at)) return offset;
    const bool isSyntax = message.text.find("syntax error") != std::string::npos ||
                          message.text.find("nexpected") != std::string::npos;
    return isSyntax ? shaders_.endBefore(stage_, at) : std::nullopt;
  }

  const NodeShaders& shaders_;
  ShaderStage stage_;
  const std::string& text_;
};

class Collector {
 public:
  Collector(const Program& program, const std::string& file)
      : file_(file), shaders_(program), lines_(program.text) {}

  std::vector<BuildError> collect(const std::string& log) {
    const std::vector<std::string> labels = shaders_.labels();
    std::size_t current = labels.size();
    std::optional<NodeShaders> node;
    for (const DriverSection& section : splitDriverLog(log, labels)) {
      // The sections come in the nodes' order, each node's stages together.
      const bool goesOn =
          current < labels.size() && labels[current] == section.label && section.stage > stage_;
      if (!goesOn) {
        current = nextOf(labels, section.label, current);
        node = shaders_.node(current);
        nodeHasErrors_ = false;
      }
      stage_ = section.stage;
      addSection(*node, section);
    }
    return std::move(errors_);
  }

 private:
  static std::size_t nextOf(const std::vector<std::string>& labels, const std::string& label,
                            std::size_t behind) {
    const std::size_t first = behind < labels.size() ? behind + 1 : 0;
    const auto begin = labels.begin() + static_cast<std::ptrdiff_t>(first);
    auto found = std::find(begin, labels.end(), label);
    if (found == labels.end()) found = std::find(labels.begin(), labels.end(), label);
    return static_cast<std::size_t>(found - labels.begin());
  }

  void addSection(const NodeShaders& node, const DriverSection& section) {
    if (!node.hasKernel) {
      DriverMessage message;
      message.text = "the node's kernel is not in the graph";
      add(node, section.stage, message, nullptr);
      return;
    }
    // That a program without its shaders does not link says nothing new.
    if (section.stage == ShaderStage::Link && nodeHasErrors_) return;
    nodeHasErrors_ = true;
    std::vector<DriverMessage> messages = parseDriverMessages(section.log);
    if (std::none_of(messages.begin(), messages.end(), [](const auto& m) { return m.isError; })) {
      messages.emplace_back().text = std::string("the ") + stageName(section.stage) +
                                     " stage fails; the driver does not say why";
    }
    const Locator locator(node, section.stage);
    for (const DriverMessage& message : messages)
      add(node, section.stage, message, section.stage == ShaderStage::Link ? nullptr : &locator);
  }

  void add(const NodeShaders& node, ShaderStage stage, const DriverMessage& message,
           const Locator* locator) {
    BuildError error;
    error.isError = message.isError;
    error.file = file_;
    error.message = message.text;
    error.isCut = message.isCut;
    const auto offset = locator ? locator->fileOffset(message) : std::nullopt;
    if (offset) {
      error.place = lines_.placeOf(*offset);
      error.excerpt = lines_.excerpt(*offset);
    } else if (!message.isError) {
      return;  // about text that nobody here wrote
    } else if (locator && locator->countsOwnLines()) {
      error.message += " (line " + std::to_string(message.line) + " as #line counts)";
    } else if (locator) {
      error.generatedLine = message.line;
      error.generatedText = locator->generatedText(message);
    }
    const auto known = std::find_if(errors_.begin(), errors_.end(), [&](const BuildError& other) {
      return other.isError == error.isError && sameMessage(other, error) &&
             other.generatedText == error.generatedText && samePlace(other, error);
    });
    BuildError& target = known == errors_.end() ? errors_.emplace_back(error) : *known;
    if (target.message.size() < error.message.size()) target.message = error.message;
    target.isCut = target.isCut && error.isCut;
    addOnce(target.stages, stage);
    const auto& told = target.nodes;
    if (std::find(told.begin(), told.end(), node.label) != told.end()) return;
    target.nodes.insert(target.nodes.end(), node.nodes.begin(), node.nodes.end());
  }

  // The stages' logs are cut at different places.
  static bool sameMessage(const BuildError& a, const BuildError& b) {
    return a.message == b.message || (a.isCut && b.message.starts_with(a.message)) ||
           (b.isCut && a.message.starts_with(b.message));
  }

  static bool samePlace(const BuildError& a, const BuildError& b) {
    if (!a.place || !b.place) return !a.place && !b.place;
    return a.place->line == b.place->line && a.place->column == b.place->column;
  }

  template <typename T>
  static void addOnce(std::vector<T>& list, const T& item) {
    if (std::find(list.begin(), list.end(), item) == list.end()) list.push_back(item);
  }

  const std::string& file_;
  ProgramShaders shaders_;
  SourceLines lines_;
  ShaderStage stage_ = ShaderStage::Vertex;
  bool nodeHasErrors_ = false;
  std::vector<BuildError> errors_;
};

std::string nodesText(const std::vector<std::string>& nodes) {
  if (nodes.empty()) return "";
  std::string text = nodes.size() == 1 ? " (node " : " (nodes ";
  for (std::size_t i = 0; i < nodes.size() && i < kNamedNodes; ++i)
    text += (i > 0 ? ", " : "") + harmless(nodes[i]);
  if (nodes.size() > kNamedNodes) {
    text += " and " + std::to_string(nodes.size() - kNamedNodes) + " more";
  }
  return text + ")";
}

std::string clipped(const std::string& line) {
  return line.size() > kMessageWidth ? line.substr(0, kMessageWidth) + " ..." : line;
}

// The first line, the nodes behind it, and the others.
std::string messageText(const BuildError& error) {
  const std::size_t end = std::min(error.message.find('\n'), error.message.size());
  std::string text = harmless(clipped(error.message.substr(0, end))) + (error.isCut ? " ..." : "") +
                     nodesText(error.nodes) + "\n";
  for (std::size_t at = end; at < error.message.size();) {
    const std::size_t next = std::min(error.message.find('\n', at + 1), error.message.size());
    text += harmless(error.message.substr(at + 1, next - at - 1)) + "\n";
    at = next;
  }
  return text;
}

// A word of a command, quoted where a shell wants it.
std::string shellWord(const std::string& word) {
  const bool isPlain = !word.empty() && std::all_of(word.begin(), word.end(), [](char c) {
    return isWordCharacter(c) || std::string_view("-./\\:+,@").find(c) != std::string_view::npos;
  });
  return isPlain ? word : "'" + harmless(word) + "'";
}

std::string generatedNote(const BuildError& error) {
  std::string shown = error.generatedText;
  const std::size_t begin = std::min(shown.find_first_not_of(kBlanks), shown.size());
  shown = harmless(shown.substr(begin, kGeneratedWidth));
  const std::string stage = stageName(error.stages.front());
  std::string command = "vellumtide glsl " + shellWord(error.file) + " --stage " + stage;
  if (!error.nodes.empty()) command += " --node " + shellWord(error.nodes.front());
  const std::string line = error.generatedLine > 0
                               ? "line " + std::to_string(error.generatedLine) + " of "
                               : std::string();
  return (shown.empty() ? "" : "  " + shown + "\n") + "  (" + line + "the generated " + stage +
         " shader; to see it: " + command + ")\n";
}

}  // namespace

std::vector<BuildError> readBuildErrors(const Program& program, const std::string& file,
                                        const std::string& log) {
  return Collector(program, file).collect(log);
}

std::string textOf(const std::vector<BuildError>& errors) {
  std::string text;
  for (std::size_t i = 0; i < errors.size(); ++i) {
    const BuildError& error = errors[i];
    text += harmless(error.file) + ":";
    if (error.place) {
      text += std::to_string(error.place->line) + ":" + std::to_string(error.place->column) + ":";
    }
    text += (error.isError ? " error: " : " warning: ") + messageText(error);
    const bool isLast = i + 1 == errors.size();
    if (error.place) {
      // A row of errors at one place shows it once, below the last.
      if (isLast || errors[i + 1].excerpt != error.excerpt) text += error.excerpt;
    } else if (error.generatedLine > 0) {
      text += generatedNote(error);
    }
  }
  return text;
}

const char* stageName(ShaderStage stage) {
  switch (stage) {
    case ShaderStage::Vertex:
      return "vertex";
    case ShaderStage::Fragment:
      return "fragment";
    default:
      return "link";
  }
}

}  // namespace vellumtide::cli
