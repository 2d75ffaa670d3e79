#include <memory>

#include "cli/commands/check_report.h"
#include "cli/commands/commands.h"
#include "cli/commands/option_checks.h"
#include "cli/files/scratch_folder.h"
#include "cli/os/child_process.h"
#include "cli/text/failure.h"
#include "cli/text/progress.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

using Json = nlohmann::ordered_json;

struct CheckOptions {
  std::vector<std::string> files;
  std::string module;
  std::string scratch;  // where a child keeps what it needs for a while
  bool json = false;
  bool showProgress = false;
  bool here = false;
  int limitSeconds = 120;
};

std::string dumped(const Json& json, int indent) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json checkInChild(const std::string& file, const CheckOptions& options) {
  // A child that crashes or is ended leaves its files behind.
  const ScratchFolder scratch;
  std::vector<std::string> arguments = {"check", "--here", "--scratch", utf8(scratch.path())};
  if (!options.module.empty()) arguments.insert(arguments.end(), {"--module", options.module});
  arguments.insert(arguments.end(), {"--", file});
  const ChildResult child = runSelf(arguments, options.limitSeconds);
  if (!child.failure.empty()) {
    return failureReport(file, {ExitStatus::Program, "loading it " + child.failure});
  }
  const Json report = Json::parse(child.output, nullptr, false);
  if (!report.is_discarded()) return report;
  return failureReport(
      file, {ExitStatus::Failed, "its process ended with status " + std::to_string(child.status) +
                                     " and without a result"});
}

void check(const CheckOptions& options) {
  if (options.here) {
    ScratchFolder::makeIn(pathOf(options.scratch));
    writeOut(dumped(checkProgram(options.files.front(), options.module), -1));
    return;
  }
  const bool watched = options.files.size() > 1 && standardErrorIsTerminal();
  Progress progress(options.files.size(), options.showProgress || watched);
  Json reports = Json::array();
  int status = 0;
  std::size_t failed = 0;
  for (const std::string& file : options.files) {
    reports.push_back(checkInChild(file, options));
    const Json& report = reports.back();
    progress.frameDone(file);
    if (!options.json) {
      progress.breakLine();
      writeOut(reportText(report));
    }
    if (report["ok"]) continue;
    ++failed;
    if (status == 0) status = report["status"];
  }
  progress.breakLine();
  if (options.json) writeOut(dumped(reports, 2));
  if (failed == 0) return;
  throw Failure(
      static_cast<ExitStatus>(status),
      std::to_string(failed) + " of " + std::to_string(options.files.size()) + " programs failed");
}

}  // namespace

void addCheckCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand(
      "check", "Load programs through the module, each in a process of its own, and report");
  const auto options = std::make_shared<CheckOptions>();
  command->add_option("FILE", options->files, "kernels (.pbk) and graphs (.pbg)")->required();
  command->add_flag("--json", options->json, "print one JSON array");
  command->add_option("--limit", options->limitSeconds, "seconds that one program may take")
      ->check(wholeNumber(1, 86400))
      ->capture_default_str();
  command->add_flag("--progress", options->showProgress, "report each file even when nobody looks");
  command->add_option("--module", options->module, "the effect module to use");
  command->add_flag("--here", options->here)->group("");
  command->add_option("--scratch", options->scratch)->group("");
  command->callback([options] { check(*options); });
}

}  // namespace vellumtide::cli
