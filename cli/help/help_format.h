// How --help looks: description, usage, arguments, options by group, commands, examples; 80
// columns.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace vellumtide::cli {

class HelpFormat : public CLI::FormatterBase {
 public:
  std::string make_help(const CLI::App* app, std::string name,
                        CLI::AppFormatMode mode) const override;
};

}  // namespace vellumtide::cli
