#include <memory>

#include "cli/commands.h"
#include "cli/inspect.h"
#include "cli/utf8_path.h"

namespace vellumtide::cli {
namespace {

struct InspectOptions {
  std::string file;
  bool json = false;
};

void inspect(const InspectOptions& options) {
  const Program program = readProgram(pathOf(options.file));
  if (!options.json) {
    writeOut(inspectionText(program));
    return;
  }
  using Json = nlohmann::ordered_json;
  writeOut(inspectionJson(program).dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
}

}  // namespace

void addInspectCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand(
      "inspect", "Show what a program file holds: metadata, inputs, parameters and their controls");
  const auto options = std::make_shared<InspectOptions>();
  command->add_option("FILE", options->file, "kernel (.pbk) or graph (.pbg)")->required();
  command->add_flag("--json", options->json, "print one JSON object");
  command->callback([options] { inspect(*options); });
}

}  // namespace vellumtide::cli
