#include "cli/session/host_session.h"

#include "cli/build_errors/build_errors.h"
#include "cli/os/machine_room.h"
#include "cli/os/module_file.h"
#include "cli/session/driver_log.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

constexpr const char* kUnusableTitle = "(Invalid PB)";

headless::HostOptions hostOptions(const ScratchFolder& folder) {
  requireMachineRoom();
  headless::HostOptions options;
  options.ownGlContext = false;
  options.captureOutput = true;
  options.checkGuardsEveryCall = false;
  options.checkInputPixels = false;
  options.userDataFolder = utf8(folder.path());
  return options;
}

std::string lastLine(std::string text) {
  while (!text.empty() && text.back() == '\n')
    text.pop_back();
  return text.substr(text.rfind('\n') + 1);
}

// The module says in the debug output how loading the GL entry points went.
void requireDevice(const std::string& debugOutput) {
  if (debugOutput.find("GLEW initialized") != std::string::npos) return;
  const std::size_t at = debugOutput.find("Error: ");
  const std::string reason = at == std::string::npos ? "the module could not make one"
                                                     : lastLine(debugOutput.substr(at + 7));
  throw Failure(ExitStatus::NoDevice, "no usable GL device: " + reason);
}

}  // namespace

HostSession::HostSession(const std::string& modulePath, const std::string& rootFolder)
    : host_(std::make_unique<headless::Host>(loadModule(modulePath), hostOptions(folder_))) {
  if (!rootFolder.empty()) {
    host_->preferences().set("Settings_cs_VTD_Launcher", "rootFolder", rootFolder);
  }
  host_->globalSetup();
  requireDevice(host_->debugOutput());
}

std::vector<std::string> HostSession::infoLines() {
  std::vector<std::string> lines;
  for (const headless::InfoText& text : host_->infoPanel()) {
    for (const std::optional<std::string>& line : text.lines) {
      if (line && !line->empty()) lines.push_back(*line);
    }
  }
  return lines;
}

void HostSession::requireUsable(headless::Effect& effect, const std::string& programPath,
                                const Program* program) {
  std::string broken, reasons;
  for (const std::string& line : infoLines()) {
    const bool isBuildFailure = line.starts_with("!!!");
    (isBuildFailure ? broken : reasons) += "\n  " + line.substr(isBuildFailure ? 3 : 0);
  }
  const bool unusable = effect.title.find(kUnusableTitle) != std::string::npos;
  if (!unusable && broken.empty()) return;
  std::string message =
      programPath + (unusable ? ": the module cannot use this program" + reasons : "");
  if (broken.empty()) throw Failure(ExitStatus::Program, message);

  const DriverLog log = exportDriverLog(*host_, effect);
  std::vector<BuildError> errors =
      program ? readBuildErrors(*program, programPath, log.errors)
              : readBuildErrors(readProgram(pathOf(programPath)), programPath, log.errors);
  message += unusable ? "\n" : ": ";
  // Where the log says nothing of the program, the module's own notices have to do.
  message += "the shaders do not build" + (errors.empty() ? broken + "\n" : "\n" + textOf(errors));
  throw BuildFailure(message + "(" + log.driver + ")", std::move(errors));
}

std::shared_ptr<headless::World> HostSession::render(headless::Effect& effect,
                                                     const headless::RenderOptions& options) {
  host_->infoPanel().clear();
  const headless::RenderResult result = host_->render(effect, options);
  if (result.error != PF_Err_NONE) {
    std::string message = "the module answers the frame with error " + std::to_string(result.error);
    for (const std::string& line : infoLines())
      message += "\n  " + line;
    throw Failure(ExitStatus::Failed, message);
  }
  if (!result.output || result.output->width() == 0 || result.output->height() == 0) {
    throw Failure(ExitStatus::Failed, "the module gives no pixels for the frame");
  }
  // What the module says while it draws is of no use here, and would grow with every frame.
  host_->debugOutput();
  host_->standardOutput();
  host_->infoPanel().clear();
  return result.output;
}

void HostSession::finish() {
  host_->finish();
  const std::string faults = host_->books().faultText();
  if (!faults.empty()) {
    throw Failure(ExitStatus::Failed,
                  "the work is done, but the module broke the host's rules:\n" + faults);
  }
}

}  // namespace vellumtide::cli
