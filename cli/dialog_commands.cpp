// What the module's dialogs say: `info` presses the options button, `about` opens the about box.
#include <memory>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/render_session.h"
#include "cli/utf8_path.h"

namespace vellumtide::cli {
namespace {

using headless::DialogRecord;

struct DialogOptions {
  std::string file;
  std::string module;
};

void info(const DialogOptions& options) {
  const Program program = readProgram(pathOf(options.file));
  std::vector<LayerPicture> pictures;
  pictures.push_back({headless::World(1, 1, PF_PixelFormat_ARGB32), {1, 1}, ""});
  RenderSession session(options.module, options.file, program, std::move(pictures));
  session.host().doDialog(session.effect());
  for (const DialogRecord& dialog : session.host().scripts().dialogs()) {
    if (dialog.kind == DialogRecord::Kind::kAlert) writeOut(dialog.text + "\n");
  }
  session.finish();
}

void about(const DialogOptions& options) {
  HostSession session(options.module);
  headless::Host& host = session.host();
  host.infoPanel().clear();
  host.about();
  for (const DialogRecord& dialog : host.scripts().dialogs()) {
    for (const headless::DrawnItem& item : dialog.drawn) {
      if (item.kind == "text") writeOut(item.text + "\n");
    }
  }
  // The about box draws the three lines of the driver first, the export of the log others after it.
  if (!host.infoPanel().empty()) {
    for (const std::optional<std::string>& line : host.infoPanel().front().lines) {
      if (line) writeOut(*line + "\n");
    }
  }
  session.finish();
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
    command->add_option("--module", options->module, "the effect module to use");
  }
}

}  // namespace vellumtide::cli
