#include "cli/build_errors/driver_message.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <string_view>

#include "kernel/characters.h"

namespace vellumtide::cli {
namespace {

// Characters of a driver's log that the module keeps.
constexpr std::size_t kLogLimit = 1023;

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

// Reads a line front to back; each take gives false, or nothing, with nothing consumed when the
// line goes on otherwise.
class LineReader {
 public:
  explicit LineReader(std::string_view line) : rest_(line) {}

  bool take(std::string_view mark) {
    if (!rest_.starts_with(mark)) return false;
    rest_.remove_prefix(mark.size());
    return true;
  }
  bool takeWord(std::string_view lowerCase) {
    if (rest_.size() < lowerCase.size()) return false;
    for (std::size_t i = 0; i < lowerCase.size(); ++i) {
      if (std::tolower(static_cast<unsigned char>(rest_[i])) != lowerCase[i]) return false;
    }
    rest_.remove_prefix(lowerCase.size());
    return true;
  }
  std::optional<int> takeNumber() {
    int number = 0;
    const auto [end, failed] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
    if (failed != std::errc() || rest_.front() == '-') return std::nullopt;
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return number;
  }
  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
};

// "error", "warning", with "fatal" or "preprocessor" before it.
std::optional<bool> takeSeverity(LineReader& line) {
  if (!line.takeWord("preprocessor ")) line.takeWord("fatal ");
  if (line.takeWord("error")) return true;
  if (line.takeWord("warning")) return false;
  return std::nullopt;
}

// 0:95(12): error: text
std::optional<DriverMessage> mesaMessage(LineReader line) {
  DriverMessage message;
  if (!line.takeNumber() || !line.take(":")) return std::nullopt;
  const auto row = line.takeNumber();
  if (!row || !line.take("(")) return std::nullopt;
  const auto column = line.takeNumber();
  if (!column || !line.take("): ")) return std::nullopt;
  const bool isRaw = line.rest().starts_with("preprocessor");
  const auto isError = takeSeverity(line);
  if (!isError || !line.take(": ")) return std::nullopt;
  message.isError = *isError;
  message.line = *row;
  message.column = *column;
  message.columns = isRaw ? DriverMessage::Columns::Text : DriverMessage::Columns::Expanded;
  message.text = line.rest();
  return message;
}

// 0(95) : error C1008: text
std::optional<DriverMessage> nvidiaMessage(LineReader line) {
  DriverMessage message;
  if (!line.takeNumber() || !line.take("(")) return std::nullopt;
  const auto row = line.takeNumber();
  if (!row || !line.take(")")) return std::nullopt;
  line.take(" ");
  if (!line.take(": ")) return std::nullopt;
  const auto isError = takeSeverity(line);
  if (!isError || !(line.take(" ") || line.take(": "))) return std::nullopt;
  message.isError = *isError;
  message.line = *row;
  message.text = line.rest();
  return message;
}

// ERROR: 0:95: text, ERROR: 0:95:12: text
std::optional<DriverMessage> otherMessage(LineReader line) {
  DriverMessage message;
  const auto isError = takeSeverity(line);
  if (!isError || !line.take(": ") || !line.takeNumber() || !line.take(":")) return std::nullopt;
  const auto row = line.takeNumber();
  if (!row || !line.take(":")) return std::nullopt;
  if (const auto column = line.takeNumber()) {
    if (!line.take(":")) return std::nullopt;
    message.column = *column;
  }
  line.take(" ");
  message.isError = *isError;
  message.line = *row;
  message.text = line.rest();
  return message;
}

std::optional<DriverMessage> placedMessage(std::string_view line) {
  const LineReader reader(line);
  if (auto message = mesaMessage(reader)) return message;
  if (auto message = nvidiaMessage(reader)) return message;
  return otherMessage(reader);
}

// A line without a place, as linkers write it: an error unless it says otherwise.
DriverMessage unplacedMessage(std::string_view line) {
  LineReader reader(line);
  const auto isError = takeSeverity(reader);
  DriverMessage message;
  const bool isWhole = isError && reader.take(": ");
  message.isError = !isWhole || *isError;
  message.text = isWhole ? reader.rest() : line;
  return message;
}

// Mesa says what could have been meant in further messages of the same place.
bool continues(const DriverMessage& last, const DriverMessage& message) {
  return message.text.starts_with("  ") && message.line == last.line &&
         message.column == last.column;
}

bool isRule(std::string_view line) {
  return line.find_first_not_of("-=* \t") == std::string_view::npos;
}

void append(std::vector<DriverMessage>& messages, DriverMessage message) {
  if (!messages.empty() && continues(messages.back(), message)) {
    messages.back().text += "\n" + message.text;
  } else {
    messages.push_back(std::move(message));
  }
}

}  // namespace

std::vector<DriverSection> splitDriverLog(const std::string& log,
                                          const std::vector<std::string>& labels) {
  constexpr std::pair<const char*, ShaderStage> kMarks[] = {
      {"(v)", ShaderStage::Vertex}, {"(f)", ShaderStage::Fragment}, {"(l)", ShaderStage::Link}};
  std::vector<DriverSection> sections;
  for (const std::string_view line : linesOf(log)) {
    bool isHead = false;
    for (const auto& [mark, stage] : kMarks) {
      if (!line.ends_with(mark)) continue;
      const std::string_view label = line.substr(0, line.size() - 3);
      if (std::find(labels.begin(), labels.end(), label) == labels.end()) continue;
      sections.push_back({std::string(label), stage, ""});
      isHead = true;
    }
    if (!isHead && !sections.empty()) sections.back().log.append(line).append("\n");
  }
  for (DriverSection& section : sections) {
    // Behind each log the module writes two line ends; one more is the last line's own.
    std::string& text = section.log;
    text.resize(text.size() - std::min<std::size_t>(text.size(), text.ends_with("\n\n") ? 2 : 1));
  }
  return sections;
}

std::vector<DriverMessage> parseDriverMessages(const std::string& log) {
  std::vector<DriverMessage> placed, others;
  std::vector<std::string_view> lines = linesOf(log);
  const bool isCut = log.size() >= kLogLimit && !log.ends_with('\n');
  if (isCut && !placedMessage(lines.back())) lines.pop_back();
  for (const std::string_view line : lines) {
    if (auto message = placedMessage(line)) {
      append(placed, std::move(*message));
    } else if (!isRule(line)) {
      others.push_back(unplacedMessage(line));
    }
  }
  const bool hasError = std::any_of(placed.begin(), placed.end(),
                                    [](const DriverMessage& message) { return message.isError; });
  if (!hasError) placed.insert(placed.end(), others.begin(), others.end());
  if (isCut && !placed.empty()) placed.back().isCut = true;
  return placed;
}

std::vector<std::string> quotedNames(const std::string& message) {
  std::vector<std::string> names;
  for (std::size_t at = 0; at < message.size(); ++at) {
    const char quote = message[at];
    if (quote != '`' && quote != '\'' && quote != '"') continue;
    std::size_t end = at + 1;
    while (end < message.size() && isWordCharacter(message[end]))
      ++end;
    // A call is quoted with its types.
    const bool isClosed = end < message.size() &&
                          (message[end] == (quote == '`' ? '\'' : quote) || message[end] == '(');
    if (end == at + 1 || !isClosed) continue;
    names.push_back(message.substr(at + 1, end - at - 1));
    at = end;
  }
  // "error(#143) Undeclared identifier: foo"
  const std::size_t colon = message.rfind(": ");
  if (names.empty() && colon != std::string::npos && colon + 2 < message.size() &&
      std::all_of(message.begin() + static_cast<std::ptrdiff_t>(colon) + 2, message.end(),
                  isWordCharacter)) {
    names.push_back(message.substr(colon + 2));
  }
  return names;
}

}  // namespace vellumtide::cli
