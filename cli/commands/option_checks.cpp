#include "cli/commands/option_checks.h"

#include <charconv>
#include <string>

namespace vellumtide::cli {

CLI::Validator wholeNumber(int least, int most) {
  const std::string range = std::to_string(least) + " to " + std::to_string(most);
  const auto check = [=](const std::string& text) -> std::string {
    int number = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    const bool isNumber = error == std::errc{} && end == last;
    if (isNumber && number >= least && number <= most) return "";
    return "\"" + text + "\" is no whole number from " + range;
  };
  return CLI::Validator(check,
                        "INT in [" + std::to_string(least) + " - " + std::to_string(most) + "]");
}

}  // namespace vellumtide::cli
