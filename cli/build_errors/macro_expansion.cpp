#include "cli/build_errors/macro_expansion.h"

#include <algorithm>
#include <cctype>

#include "kernel/characters.h"

namespace vellumtide::cli {
namespace {

constexpr std::size_t kTokenBudget = 1'000'000;
constexpr std::size_t kDepthLimit = 64;

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\v' || c == '\f';
}
bool isSpace(const MacroToken& token) {
  return token.text == " ";
}

std::size_t behindBlanks(const MacroTokens& tokens, std::size_t at) {
  while (at < tokens.size() && isSpace(tokens[at]))
    ++at;
  return at;
}

const std::string& textAt(const MacroTokens& tokens, std::size_t at) {
  static const std::string kNothing;
  return at < tokens.size() ? tokens[at].text : kNothing;
}

MacroTokens trimmed(MacroTokens tokens) {
  while (!tokens.empty() && isSpace(tokens.back()))
    tokens.pop_back();
  tokens.erase(tokens.begin(),
               tokens.begin() + static_cast<std::ptrdiff_t>(behindBlanks(tokens, 0)));
  return tokens;
}

// Where the ")" to the "(" at `open` stands, the end without one. Calls `visit` with each token in
// between and whether it is a "," of this level.
template <typename Visit>
std::size_t closeOf(const MacroTokens& tokens, std::size_t open, Visit visit) {
  int depth = 0;
  std::size_t at = open + 1;
  for (; at < tokens.size(); ++at) {
    const std::string& text = tokens[at].text;
    if (text == ")" && depth == 0) break;
    depth += text == "(" ? 1 : text == ")" ? -1 : 0;
    visit(tokens[at], text == "," && depth == 0);
  }
  return at;
}

std::vector<MacroTokens> argumentsAt(const MacroTokens& tokens, std::size_t open,
                                     std::size_t& close) {
  std::vector<MacroTokens> arguments(1);
  close = closeOf(tokens, open, [&](const MacroToken& token, bool isComma) {
    if (isComma) {
      arguments.emplace_back();
    } else {
      arguments.back().push_back(token);
    }
  });
  for (MacroTokens& argument : arguments)
    argument = trimmed(std::move(argument));
  return arguments;
}

}  // namespace

// A comment counts as blank; one that is not closed reaches to the line's end.
void appendTokens(MacroTokens& tokens, std::string_view line) {
  for (std::size_t at = 0; at < line.size();) {
    const std::size_t begin = at;
    const auto peek = [&](std::size_t ahead) {
      return at + ahead < line.size() ? line[at + ahead] : '\0';
    };
    bool isGap = false;
    while (at < line.size() && (isBlank(line[at]) || (line[at] == '/' && peek(1) == '*') ||
                                (line[at] == '/' && peek(1) == '/'))) {
      isGap = true;
      if (isBlank(line[at])) {
        ++at;
      } else {
        const std::size_t end = peek(1) == '*' ? line.find("*/", at + 2) : line.npos;
        at = end == line.npos ? line.size() : end + 2;
      }
    }
    if (!isGap) {
      ++at;
      const bool isNumber =
          std::isdigit(static_cast<unsigned char>(line[begin])) ||
          (line[begin] == '.' && std::isdigit(static_cast<unsigned char>(peek(0))));
      if (isNumber || isLetter(line[begin])) {
        while (at < line.size() && (isWordCharacter(line[at]) || (isNumber && line[at] == '.')))
          ++at;
      }
    }
    tokens.push_back({isGap ? " " : std::string(line.substr(begin, at - begin)), begin});
  }
}

bool Macros::takeDirective(const std::string& line) {
  const std::size_t mark = line.find_first_not_of(" \t\v\f");
  if (mark == line.npos || line[mark] != '#') return false;
  MacroTokens tokens;
  appendTokens(tokens, line);
  std::size_t at = behindBlanks(tokens, behindBlanks(tokens, 0) + 1);
  const std::string& word = textAt(tokens, at);
  at = behindBlanks(tokens, at + 1);
  const std::string& name = textAt(tokens, at);
  if (word == "ifdef" || word == "ifndef") {
    State state = isDefined(name);
    if (word == "ifndef" && state != State::Unknown) {
      state = state == State::Active ? State::Inactive : State::Active;
    }
    conditions_.push_back(state);
  } else if (word == "if") {
    conditions_.push_back(conditionOf(tokens, at));
  } else if (word == "endif") {
    if (!conditions_.empty()) conditions_.pop_back();
  } else if (word == "else" && !conditions_.empty()) {
    State& state = conditions_.back();
    if (state != State::Unknown) {
      state = state == State::Active ? State::Inactive : State::Active;
    }
  } else if (word == "elif" && !conditions_.empty()) {
    conditions_.back() = State::Unknown;
  } else if (word == "define" && isActive()) {
    define(tokens, at);
  } else if (word == "undef" && isActive()) {
    if (std::find(conditions_.begin(), conditions_.end(), State::Unknown) == conditions_.end()) {
      macros_.erase(name);
    } else if (const auto found = macros_.find(name); found != macros_.end()) {
      found->second.isCertain = false;
    }
  }
  return true;
}

bool Macros::isActive() const {
  return std::find(conditions_.begin(), conditions_.end(), State::Inactive) == conditions_.end();
}

Macros::State Macros::isDefined(const std::string& name) const {
  if (name.starts_with("GL_") || name.starts_with("__")) return State::Unknown;
  const auto found = macros_.find(name);
  if (found == macros_.end()) return State::Inactive;
  return found->second.isCertain ? State::Active : State::Unknown;
}

// Numbers alone are worked out.
Macros::State Macros::conditionOf(const MacroTokens& line, std::size_t at) const {
  const bool isAlone = behindBlanks(line, at + 1) >= line.size();
  const std::string& text = textAt(line, at);
  if (!isAlone || text.find_first_not_of("0123456789") != text.npos) return State::Unknown;
  return text.find_first_not_of('0') == text.npos ? State::Inactive : State::Active;
}

// The blank behind an object's body stays, that behind a call's does not.
void Macros::define(const MacroTokens& line, std::size_t at) {
  Macro macro;
  macro.isCertain =
      std::find(conditions_.begin(), conditions_.end(), State::Unknown) == conditions_.end();
  const std::string& name = textAt(line, at);
  std::size_t body = at + 1;
  macro.isCall = textAt(line, body) == "(";
  if (macro.isCall) {
    std::size_t close = 0;
    for (const MacroTokens& parameter : argumentsAt(line, body, close)) {
      if (!parameter.empty()) macro.parameters.push_back(parameter.front().text);
    }
    body = close + 1;
    hasCalls_ = true;
  }
  body = std::min(behindBlanks(line, body), line.size());
  macro.body.assign(line.begin() + static_cast<std::ptrdiff_t>(body), line.end());
  if (macro.isCall) macro.body = trimmed(std::move(macro.body));
  if (macro.body.empty()) macro.body.push_back({" "});
  for (const MacroToken& token : macro.body)
    macro.isCertain = macro.isCertain && token.text != "#";
  macros_.insert_or_assign(name, std::move(macro));
}

bool Macros::leavesCallOpen(const MacroTokens& line) const {
  if (!hasCalls_) return false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    const auto found = macros_.find(line[at].text);
    if (found == macros_.end() || !found->second.isCall) continue;
    const std::size_t open = behindBlanks(line, at + 1);
    if (open == line.size()) return true;
    if (line[open].text != "(") continue;
    at = closeOf(line, open, [](const MacroToken&, bool) {});
    if (at == line.size()) return true;
  }
  return false;
}

std::optional<std::size_t> Macros::placeOf(const MacroTokens& line, int lineNumber, int column) {
  MacroTokens expanded;
  std::vector<std::string> hidden;
  budget_ = kTokenBudget;
  line_ = lineNumber;
  const bool isWhole = expand(line, hidden, expanded);
  std::size_t begin = 1;
  const auto wanted = static_cast<std::size_t>(column);
  for (const MacroToken& token : expanded) {
    const std::size_t end = begin + token.text.size();
    if (wanted < end) return token.place + (token.isExpanded ? 0 : wanted - begin);
    begin = end;
  }
  if (!isWhole || wanted != begin || line.empty()) return std::nullopt;
  return line.back().place + line.back().text.size();
}

// False when the rest cannot be told; what comes before it is in the result.
bool Macros::expand(const MacroTokens& tokens, std::vector<std::string>& hidden,
                    MacroTokens& result) {
  if (hidden.size() > kDepthLimit) return false;
  for (std::size_t at = 0; at < tokens.size(); ++at) {
    const MacroToken& token = tokens[at];
    if (budget_ == 0) return false;
    --budget_;
    if (token.text == "__LINE__" || token.text == "__VERSION__" || token.text == "__FILE__") {
      const std::string text = token.text == "__LINE__"      ? std::to_string(line_)
                               : token.text == "__VERSION__" ? "120"
                                                             : "0";
      result.push_back({text, token.place, true});
      continue;
    }
    const auto found = macros_.find(token.text);
    const bool isHidden = std::find(hidden.begin(), hidden.end(), token.text) != hidden.end();
    const bool isCalled = textAt(tokens, behindBlanks(tokens, at + 1)) == "(";
    if (found == macros_.end() || isHidden || (found->second.isCall && !isCalled)) {
      result.push_back(token);
      continue;
    }
    const Macro& macro = found->second;
    if (!macro.isCertain) return false;
    const std::size_t place = token.place;
    MacroTokens replaced;
    if (macro.isCall) {
      if (!expandCall(macro, tokens, at, hidden, replaced)) return false;
    } else {
      for (const MacroToken& inner : macro.body)
        replaced.push_back({inner.text, place, true});
    }
    MacroTokens inner;
    hidden.push_back(found->first);
    const bool isWhole = expand(replaced, hidden, inner);
    hidden.pop_back();
    // Two signs of a kind are kept apart.
    const bool isSign = !inner.empty() && (inner[0].text == "-" || inner[0].text == "+");
    if (isSign && !result.empty() && result.back().text == inner[0].text) {
      result.push_back({" ", place, true});
    }
    result.insert(result.end(), inner.begin(), inner.end());
    if (!isWhole) return false;
    // What an object leaves could be called by what follows.
    if (!inner.empty() && textAt(tokens, behindBlanks(tokens, at + 1)) == "(") {
      const auto last = macros_.find(inner.back().text);
      if (last != macros_.end() && last->second.isCall) return false;
    }
  }
  return true;
}

// From the name at `at` to its ")", where `at` is left: the body with the expanded arguments.
bool Macros::expandCall(const Macro& macro, const MacroTokens& tokens, std::size_t& at,
                        std::vector<std::string>& hidden, MacroTokens& replaced) {
  const std::size_t place = tokens[at].place;
  std::size_t close = 0;
  std::vector<MacroTokens> arguments = argumentsAt(tokens, behindBlanks(tokens, at + 1), close);
  if (close == tokens.size()) return false;
  if (macro.parameters.empty() && arguments.front().empty()) arguments.clear();
  if (arguments.size() != macro.parameters.size()) return false;
  at = close;
  for (const MacroToken& token : macro.body) {
    const auto parameter = std::find(macro.parameters.begin(), macro.parameters.end(), token.text);
    if (parameter == macro.parameters.end()) {
      replaced.push_back({token.text, place, true});
    } else {
      const auto index = static_cast<std::size_t>(parameter - macro.parameters.begin());
      if (!expand(arguments[index], hidden, replaced)) return false;
    }
  }
  return true;
}

}  // namespace vellumtide::cli
