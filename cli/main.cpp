#include <exception>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/messages.h"

namespace vellumtide::cli {
namespace {

int report(const std::string& message, ExitStatus status) {
  say(message);
  return static_cast<int>(status);
}

bool hasCommand(const CLI::App& app, std::string_view name) {
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    if (command->get_name() == name) return true;
  }
  return false;
}

int run(int argc, char** argv) {
  CLI::App app("Runs Pixel Bender kernels and graphs on the graphics card.", "vellumtide");
  app.set_version_flag("--version", "vellumtide " VELLUMTIDE_VERSION);
  app.require_subcommand(1);
  app.allow_windows_style_options(false);  // "/x" is a path, everywhere
  app.footer(
      "vellumtide COMMAND --help tells more. Exit status: 0 done, 1 a frame or something\n"
      "else failed, 2 wrong usage, 3 the program cannot be loaded or does not build,\n"
      "4 an image cannot be read or written, 5 no usable GL device.");
  addRenderCommand(app);
  addInspectCommand(app);
  addGlslCommand(app);
  addCheckCommand(app);
  addCompareCommand(app);
  addDialogCommands(app);
  addProjectCommand(app);
  addCompletionCommand(app);
  if (argc > 1 && argv[1][0] != '-' && !hasCommand(app, argv[1])) {
    return report("there is no command " + std::string(argv[1]) + " (see --help)",
                  ExitStatus::Usage);
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return app.exit(error);
    return report(std::string(error.what()) + " (see --help)", ExitStatus::Usage);
  }
  return 0;
}

}  // namespace

}  // namespace vellumtide::cli

int main(int argc, char** argv) {
  using namespace vellumtide::cli;
  try {
    return run(argc, argv);
  } catch (const Failure& failure) {
    return report(failure.what(), failure.status);
  } catch (const std::exception& error) {
    return report(error.what(), ExitStatus::Failed);
  }
}
