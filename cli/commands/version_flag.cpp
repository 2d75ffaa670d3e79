// --version, and with --gl the driver as the module's about box names it.
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/commands/commands.h"
#include "cli/session/about_box.h"

namespace vellumtide::cli {
namespace {

struct VersionOptions {
  bool gl = false;
  bool json = false;
};

void printVersion(const std::string& version, const VersionOptions& options) {
  const AboutBox box = options.gl ? readAboutBox("") : AboutBox{};
  if (options.json) {
    nlohmann::ordered_json json = {{"version", version}};
    if (options.gl) json["gl"] = driverJson(box);
    writeOut(json.dump(2) + "\n");
    return;
  }
  std::string text = "vellumtide " + version + "\n";
  for (const std::string& line : box.driver)
    text += line + "\n";
  writeOut(text);
}

}  // namespace

void addVersionFlag(CLI::App& app, const std::string& version) {
  const auto options = std::make_shared<VersionOptions>();
  // Options act in this order, so that those before --version are known to it.
  CLI::Option* gl = app.add_flag("--gl", options->gl, "with --version: the GL driver as well");
  CLI::Option* json = app.add_flag("--json", options->json, "with --version: one JSON object");
  CLI::Option* flag = app.add_flag_callback(
      "--version",
      [options, version] {
        printVersion(version, *options);
        throw CLI::Success();
      },
      "show the version and end");
  gl->needs(flag);
  json->needs(flag);
}

}  // namespace vellumtide::cli
