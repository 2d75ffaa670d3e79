#include <climits>
#include <memory>

#include "cli/commands/commands.h"
#include "cli/commands/option_checks.h"
#include "cli/program/program_file.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"
#include "glsl/shader_text.h"
#include "graph/node_shaders.h"

namespace vellumtide::cli {
namespace {

struct GlslOptions {
  std::string file;
  std::string stage;
  std::string node;
  int order = 18;  // the host's pixels
};

std::string nodeIds(const pbGraphInfo& graph) {
  std::string ids;
  for (const pbgNodeInfo& node : graph.nodes)
    ids += (ids.empty() ? "" : ", ") + node.id.str();
  return graph.nodes.empty() ? "it has no nodes" : "its nodes are " + ids;
}

// A graph of one node needs no --node.
std::size_t findNode(const pbGraphInfo& graph, const GlslOptions& options) {
  if (options.node.empty() && graph.nodes.size() == 1) return 0;
  if (options.node.empty()) {
    throw Failure(ExitStatus::Usage,
                  options.file + ": is a graph; name a node with --node: " + nodeIds(graph));
  }
  const NameText id(options.node);  // cut as the file's ids are
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    if (graph.nodes[i].id == id) return i;
  }
  throw Failure(ExitStatus::Usage,
                options.file + ": there is no node " + options.node + "; " + nodeIds(graph));
}

void printGlsl(const GlslOptions& options) {
  const Program program = readProgram(pathOf(options.file));
  std::string vertexText, fragmentText;
  if (const pbGraphInfo* graph = program.graph()) {
    const std::size_t index = findNode(*graph, options);
    if (generateNodeShaders(*graph, index, vertexText, fragmentText, options.order) != 0) {
      throw Failure(ExitStatus::Program, options.file + ": node " + graph->nodes[index].id.str() +
                                             " runs the kernel " + graph->nodes[index].name.str() +
                                             ", which the graph does not hold");
    }
  } else {
    if (!options.node.empty()) {
      throw Failure(ExitStatus::Usage,
                    options.file + ": is a kernel and has no nodes; leave --node out");
    }
    generateKernelShaders(*program.kernel(), options.order, vertexText, fragmentText);
  }
  writeOut(options.stage == "vertex" ? vertexText : fragmentText);
}

}  // namespace

void addGlslCommand(CLI::App& app) {
  CLI::App* command =
      app.add_subcommand("glsl", "Print the shader text that a kernel or a node is compiled from");
  const auto options = std::make_shared<GlslOptions>();
  command->add_option("FILE", options->file, "kernel (.pbk) or graph (.pbg)")->required();
  command->add_option("--stage", options->stage, "vertex or fragment")
      ->required()
      ->check(CLI::IsMember({"vertex", "fragment"}));
  command->add_option("--node", options->node, "id of a graph's node");
  command
      ->add_option("--order", options->order,
                   "channel order of the pixels, 0 to 23; above that no swizzle is written")
      ->check(wholeNumber(0, INT_MAX))
      ->capture_default_str();
  command->callback([options] { printGlsl(*options); });
}

}  // namespace vellumtide::cli
