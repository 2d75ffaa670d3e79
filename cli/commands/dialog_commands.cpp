// What the module's dialogs say: `info` presses the options button, `about` opens the about box.
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/commands/commands.h"
#include "cli/session/about_box.h"
#include "cli/session/render_session.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

using headless::DialogRecord;
using Json = nlohmann::ordered_json;

struct DialogOptions {
  std::string file;
  std::string module;
  bool json = false;
};

void print(const Json& json) {
  writeOut(json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
}

void info(const DialogOptions& options) {
  const Program program = readProgram(pathOf(options.file));
  std::vector<LayerPicture> pictures;
  pictures.push_back({headless::World(1, 1, PF_PixelFormat_ARGB32), {1, 1}, ""});
  RenderSession session(options.module, options.file, program, std::move(pictures));
  session.host().doDialog(session.effect());
  Json texts = Json::array();
  for (const DialogRecord& dialog : session.host().scripts().dialogs()) {
    if (dialog.kind != DialogRecord::Kind::kAlert) continue;
    texts.push_back(dialog.text);
    if (!options.json) writeOut(dialog.text + "\n");
  }
  if (options.json) print({{"file", options.file}, {"texts", texts}});
  session.finish();
}

void about(const DialogOptions& options) {
  const AboutBox box = readAboutBox(options.module);
  if (options.json) {
    print({{"text", box.text}, {"gl", driverJson(box)}});
    return;
  }
  for (const std::vector<std::string>* lines : {&box.text, &box.driver}) {
    for (const std::string& line : *lines)
      writeOut(line + "\n");
  }
}

}  // namespace

void addDialogCommands(CLI::App& app) {
  const auto options = std::make_shared<DialogOptions>();
  CLI::App* infoCommand =
      app.add_subcommand("info", "Show what the effect's information dialog says of a program");
  infoCommand->add_option("FILE", options->file, "kernel (.pbk) or graph (.pbg)")->required();
  infoCommand->callback([options] { info(*options); });
  CLI::App* aboutCommand =
      app.add_subcommand("about", "Show what the effect's about box says, driver included");
  aboutCommand->callback([options] { about(*options); });
  for (CLI::App* command : {infoCommand, aboutCommand}) {
    command->add_flag("--json", options->json, "print one JSON object");
    command->add_option("--module", options->module, "the effect module to use");
  }
}

}  // namespace vellumtide::cli
