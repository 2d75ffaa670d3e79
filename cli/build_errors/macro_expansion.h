// The macros of a shader text, followed as far as columns in Mesa's messages need it.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumtide::cli {

struct MacroToken {
  std::string text;
  std::size_t place = 0;    // in the text
  bool isExpanded = false;  // brought in by a macro, whose name stands at the place
};

using MacroTokens = std::vector<MacroToken>;

// Splits a line into words, numbers, blanks (a run of them as one) and single characters, each with
// its place in the line.
void appendTokens(MacroTokens& tokens, std::string_view line);

class Macros {
 public:
  // True when the line is a directive, which then has its effect.
  bool takeDirective(const std::string& line);

  // Whether lines count here; true also when that cannot be told.
  bool isActive() const;

  // Whether there are macros that take arguments.
  bool hasCalls() const { return hasCalls_; }

  // Whether the line ends inside the arguments of a macro.
  bool leavesCallOpen(const MacroTokens& line) const;

  // The place of what stands at the column, from 1, once the line is expanded; behind the last
  // token for one column more. Nothing when that cannot be told.
  std::optional<std::size_t> placeOf(const MacroTokens& line, int lineNumber, int column);

 private:
  enum class State { Active, Inactive, Unknown };

  struct Macro {
    bool isCall = false;
    bool isCertain = true;
    std::vector<std::string> parameters;
    MacroTokens body;
  };

  void define(const MacroTokens& line, std::size_t at);
  State conditionOf(const MacroTokens& line, std::size_t at) const;
  State isDefined(const std::string& name) const;

  bool expand(const MacroTokens& tokens, std::vector<std::string>& hidden, MacroTokens& result);
  bool expandCall(const Macro& macro, const MacroTokens& tokens, std::size_t& at,
                  std::vector<std::string>& hidden, MacroTokens& replaced);

  std::map<std::string, Macro, std::less<>> macros_;
  std::vector<State> conditions_;
  bool hasCalls_ = false;
  std::size_t budget_ = 0;  // of tokens in one expansion
  int line_ = 0;
};

}  // namespace vellumtide::cli
