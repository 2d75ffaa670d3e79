#include "cli/help/help_headings.h"

#include <string_view>

#include "cli/help/command_tree.h"

namespace vellumtide::cli {
namespace {

// The same name means the same in every command.
constexpr struct {
  const char *flag, *value;
} kValues[] = {
    {"--input", "IMAGE"},          {"--output", "FILE"},        {"--size", "WxH"},
    {"--set", "NAME=VALUE"},       {"--frames", "LIST"},        {"--fps", "R"},
    {"--key", "NAME@FRAME=VALUE"}, {"--animation", "FILE"},     {"--module", "FILE"},
    {"--report", "FILE"},          {"--pixel-aspect", "R"},     {"--limit", "SECONDS"},
    {"--memory", "MIB"},           {"--root-folder", "FOLDER"}, {"--node", "ID"},
    {"--tolerance", "T"},          {"--allow", "PIXELS"},       {"--amplify", "X"},
    {"--sweep", "NAME=VALUES"},    {"--cell", "WxH"},           {"--background", "COLOR"},
    {"--title", "TEXT"},           {"--columns", "N"},          {"--font", "FILE"},
    {"--graph", "svg|dot"}};

constexpr struct {
  const char *heading, *flag;
} kRenderHeadings[] = {{"Images", "--input"},
                       {"Images", "--output"},
                       {"Images", "--size"},
                       {"Images", "--depth"},
                       {"Images", "--sample-type"},
                       {"Images", "--no-alpha"},
                       {"Images", "--compression"},
                       {"Images", "--downsample"},
                       {"Images", "--pixel-aspect"},
                       {"Controls", "--set"},
                       {"Controls", "--key"},
                       {"Controls", "--animation"},
                       {"Sequences", "--frames"},
                       {"Sequences", "--fps"},
                       {"Sequences", "--missing"},
                       {"Sequences", "--keep-going"},
                       {"Sequences", "--skip-existing"},
                       {"Sequences", "--threads"},
                       {"Sequences", "--memory"},
                       {"Sequences", "--watch"},
                       {"What is reported", "--progress"},
                       {"What is reported", "--report"}};

}  // namespace

void nameValues(CLI::App& app) {
  forEachCommand(app, [&app](const std::string& path, const CLI::App&) {
    CLI::App& command = *findCommand(app, path);
    for (const auto& [flag, value] : kValues) {
      CLI::Option* option = command.get_option_no_throw(flag);
      if (option != nullptr && takesValue(*option)) option->type_name(value);
    }
    if (path != "render") return;
    for (const auto& [heading, flag] : kRenderHeadings) {
      if (CLI::Option* option = command.get_option_no_throw(flag)) option->group(heading);
    }
  });
}

}  // namespace vellumtide::cli
