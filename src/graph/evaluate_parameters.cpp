#include "glsl/names.h"
#include "graph/graph_info.h"
#include "kernel/shader_reader.h"

namespace vellumtide {
namespace {

/// Copies a node's function through its closing brace, with the graph's parameters under their
/// shader names and the node's own id dropped in front of its parameters. Names that a record cuts
/// are meant where they stand whole.
class EvaluateParametersParaser : public ShaderReader::Parser {
 public:
  EvaluateParametersParaser(const GraphParameterNames& parameterNames, std::string id)
      : parameterNames_(parameterNames), id_(std::move(id)) {}

  bool onToken(ShaderReader& reader, std::size_t length, TokenKind, LexState lexState,
               std::string_view token) override {
    if (token == "}" && reader.braceDepth() == 0) {
      keep(reader, length, token);
      return true;
    }
    if (output.ends_with('\n') && (token == "\t" || token == "\n")) return false;

    const std::size_t place = reader.position() - length;
    const std::string_view cut = token.substr(0, NameText::kCapacity);
    const bool isId = token == id_ || (cut == id_ && reader.peek(0) == ':');
    if (isId) {
      if (lexState == LexState::Preprocessor) {
        put(" ", place);
      } else {
        const std::string_view name = reader.nextIdentifier(";");
        keep(reader, name.size(), name);
      }
    } else if (token == ":" && reader.peek(1) == ':') {
      // The character looked at is the one behind the next: "::" itself is not meant.
      reader.skipCharacter();
      put(" ", place);
    } else {
      const bool isParameter = parameterNames_.contains(token);
      if (isParameter) put(graphParameterPrefix(token), place);
      keep(reader, length, isParameter ? cut : token);
    }
    return false;
  }

 private:
  const GraphParameterNames& parameterNames_;
  std::string id_;
};

}  // namespace

void pbGraphInfo::pbgNodeInfo::parse(const pbGraphInfo& graph) {
  parse(GraphParameterNames(graph));
}

void pbGraphInfo::pbgNodeInfo::parse(const GraphParameterNames& parameterNames, SourceMap* map) {
  ShaderReader reader(evaluateParametersSource);
  EvaluateParametersParaser parser(parameterNames, id.str());
  parser.map = map;
  reader.run(parser);
  evaluateParameters = std::move(parser.output);
}

}  // namespace vellumtide
