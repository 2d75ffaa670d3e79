#include "cli/frame_sequence.h"

#include <charconv>
#include <cstdio>
#include <regex>

#include "cli/failure.h"
#include "cli/utf8_path.h"

namespace vellumtide::cli {
namespace {

constexpr std::size_t kMostFrames = 1000000;

const std::regex& placePattern() {
  static const std::regex pattern("%(0?)([0-9]{0,2})d|(#+)");
  return pattern;
}

int toInt(const std::string& text) {
  int value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

}  // namespace

std::vector<int> parseFrames(std::string_view text) {
  static const std::regex range("([0-9]{1,8})(?:-([0-9]{1,8})(?:x([1-9][0-9]{0,7}))?)?");
  std::vector<int> frames;
  const std::string whole(text);
  for (std::size_t start = 0; start <= whole.size();) {
    const std::size_t comma = std::min(whole.find(',', start), whole.size());
    const std::string part = whole.substr(start, comma - start);
    std::smatch match;
    if (!std::regex_match(part, match, range)) {
      throw Failure(ExitStatus::Usage,
                    "--frames " + whole + ": expected 1-100, 1-99x2 or 3,5,10-20");
    }
    const int first = toInt(match[1]);
    const int last = match[2].matched ? toInt(match[2]) : first;
    const int step = match[3].matched ? toInt(match[3]) : 1;
    if (last < first) {
      throw Failure(ExitStatus::Usage, "--frames " + whole + ": " + part + " runs backwards");
    }
    for (int frame = first; frame <= last; frame += step) {
      if (frames.size() == kMostFrames) {
        throw Failure(ExitStatus::Usage, "--frames " + whole + ": more than a million frames");
      }
      frames.push_back(frame);
    }
    start = comma + 1;
  }
  return frames;
}

bool isNumbered(const std::filesystem::path& pattern) {
  return std::regex_search(utf8(pattern.filename()), placePattern());
}

std::filesystem::path frameName(const std::filesystem::path& pattern, int frame) {
  const std::string name = utf8(pattern.filename());
  std::smatch match;
  if (!std::regex_search(name, match, placePattern())) return pattern;
  const bool hashes = match[3].matched;
  const int width = hashes ? static_cast<int>(match[3].length()) : toInt(match[2]);
  const bool zeros = hashes || match[1].length() > 0;
  char number[128];
  std::snprintf(number, sizeof number, zeros ? "%0*d" : "%*d", std::min(width, 99), frame);
  return pattern.parent_path() / pathOf(match.prefix().str() + number + match.suffix().str());
}

}  // namespace vellumtide::cli
