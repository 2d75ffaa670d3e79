#include <memory>

#include "cli/commands/commands.h"
#include "cli/files/file_guard.h"
#include "cli/files/pending_file.h"
#include "cli/program/graph_drawing.h"
#include "cli/program/inspect.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

using Json = nlohmann::ordered_json;

struct InspectOptions {
  std::string file, graph, output;
  bool json = false;
};

// Whole or not at all; "" is standard output.
void writeDrawing(const std::string& text, const std::string& output) {
  if (output.empty()) return writeOut(text);
  try {
    writeFile(pathOf(output), text);
  } catch (const WriteRefusal& refusal) {
    throw Failure(ExitStatus::Image, output + ": cannot be written: " + refusal.what());
  }
}

void inspect(const InspectOptions& options) {
  if (!options.output.empty() && options.graph.empty()) {
    throw Failure(ExitStatus::Usage, "-o: only a drawing goes to a file; ask for it with --graph");
  }
  if (!options.output.empty()) {
    FileGuard guard;
    guard.reads("the program", pathOf(options.file));
    guard.writes("-o", pathOf(options.output));
  }
  const Program program = readProgram(pathOf(options.file));
  if (!options.graph.empty()) {
    const std::string text = graphvizText(program);
    writeDrawing(options.graph == "svg" ? drawSvg(text) : text, options.output);
  } else if (options.json) {
    writeOut(inspectionJson(program).dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
  } else {
    writeOut(inspectionText(program));
  }
}

}  // namespace

void addInspectCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand(
      "inspect", "Show what a program file holds: metadata, inputs, parameters and their controls");
  const auto options = std::make_shared<InspectOptions>();
  command->add_option("FILE", options->file, "kernel (.pbk) or graph (.pbg)")->required();
  CLI::Option* const json = command->add_flag("--json", options->json, "print one JSON object");
  command
      ->add_option("--graph", options->graph,
                   "draw the program: svg, by Graphviz, or dot, the text that Graphviz draws from")
      ->check(CLI::IsMember({"svg", "dot"}))
      ->excludes(json);
  command->add_option("-o,--output", options->output,
                      "file for the drawing (default: standard output)");
  command->callback([options] { inspect(*options); });
}

}  // namespace vellumtide::cli
