#include "cli/help/argument_words.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "cli/help/command_tree.h"

namespace vellumtide::cli {
namespace {

constexpr const char* kMayBeEmpty[] = {"--title"};  // a sheet without its first line

// "--size=": an option's name and nothing behind it.
bool lacksValue(std::string_view word) {
  return word.size() > 3 && word.starts_with("--") && word.ends_with('=') &&
         std::all_of(word.begin() + 2, word.end() - 1,
                     [](unsigned char c) { return std::isalnum(c) || c == '-'; });
}

std::string emptiness(const std::string& value) {
  return value.empty() ? "the value is empty" : "";
}

}  // namespace

std::vector<std::string> wordsOf(int argc, char** argv) {
  std::vector<std::string> words;
  bool areFiles = false;
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    areFiles = areFiles || word == "--";
    if (!areFiles && lacksValue(word)) {
      words.emplace_back(word.substr(0, word.size() - 1));
      words.emplace_back();
    } else {
      words.emplace_back(word);
    }
  }
  return words;
}

void refuseEmptyValues(CLI::App& app) {
  const auto isShown = [](CLI::App* command) { return !command->get_group().empty(); };
  for (CLI::App* command : app.get_subcommands(isShown)) {
    for (CLI::Option* option : command->get_options()) {
      const bool mayBeEmpty = std::any_of(std::begin(kMayBeEmpty), std::end(kMayBeEmpty),
                                          [&](const char* n) { return option->check_name(n); });
      if (takesValue(*option) && !mayBeEmpty) option->check(emptiness);
    }
    refuseEmptyValues(*command);
  }
}

std::string valueIn(const std::vector<std::string>& words, const std::string& name) {
  std::string value;
  const auto end = std::find(words.begin(), words.end(), "--");
  for (auto word = words.begin(); word != end; ++word) {
    if (*word == name && word + 1 != end) value = *(word + 1);
    if (word->starts_with(name + "=")) value = word->substr(name.size() + 1);
  }
  return value;
}

}  // namespace vellumtide::cli
