#include "cli/sequence/frame_list.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <unordered_set>

#include "cli/text/failure.h"

namespace vellumtide::cli {
namespace {

constexpr std::int64_t kMostFrames = 1000000;
constexpr std::size_t kShortestRun = 3;  // fewer frames are written one by one
constexpr std::size_t kLongestQuote = 60;

std::string quotable(std::string_view text) {
  const bool isLong = text.size() > kLongestQuote;
  return std::string(text.substr(0, kLongestQuote)) + (isLong ? "..." : "");
}

[[noreturn]] void fail(std::string_view text, const std::string& reason) {
  throw Failure(ExitStatus::Usage, "--frames " + quotable(text) + ": " + reason);
}

std::string_view withoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Takes a whole number, and the blanks around it, off the front of the text.
std::optional<std::int64_t> takeNumber(std::string_view& text) {
  text = withoutBlanks(text);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{}) return {};
  text = withoutBlanks(text.substr(static_cast<std::size_t>(end - text.data())));
  return value;
}

bool isFrame(std::int64_t value) {
  return value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
}

struct FrameRange {
  std::int64_t first = 0, last = 0, step = 1;
  std::int64_t count() const { return (last - first) / step + 1; }
};

// part = number [ "-" number [ ( "x" | ":" ) number ] ]
std::optional<FrameRange> parseRange(std::string_view part) {
  const std::optional<std::int64_t> first = takeNumber(part);
  if (!first || !isFrame(*first)) return {};
  if (part.empty()) return FrameRange{*first, *first, 1};
  if (part.front() != '-') return {};
  part.remove_prefix(1);
  const std::optional<std::int64_t> last = takeNumber(part);
  if (!last || !isFrame(*last)) return {};
  const bool runsBack = *last < *first;
  if (part.empty()) return FrameRange{*first, *last, runsBack ? -1 : 1};
  if (part.front() != 'x' && part.front() != ':') return {};
  part.remove_prefix(1);
  const std::optional<std::int64_t> step = takeNumber(part);
  if (!step || *step == 0 || !isFrame(*step) || !part.empty()) return {};
  if (*step < 0 && !runsBack) return {};
  return FrameRange{*first, *last, runsBack && *step > 0 ? -*step : *step};
}

// The first number, if any, that has the digits of one and is too large.
std::string frameBeyond(std::string_view part) {
  constexpr std::string_view kDigits = "0123456789";
  std::size_t start = part.find_first_of(kDigits);
  while (start != std::string_view::npos) {
    const std::size_t end = std::min(part.find_first_not_of(kDigits, start), part.size());
    const std::string_view digits = part.substr(start, end - start);
    int frame = 0;
    const auto error = std::from_chars(digits.data(), digits.data() + digits.size(), frame).ec;
    if (error == std::errc::result_out_of_range) return std::string(digits);
    start = part.find_first_of(kDigits, end);
  }
  return {};
}

// How many frames from `start` on are evenly spaced.
std::size_t runLength(const std::vector<int>& frames, std::size_t start) {
  if (start + 1 >= frames.size()) return 1;
  const std::int64_t step = std::int64_t{frames[start + 1]} - frames[start];
  if (step == 0 || !isFrame(step)) return 1;
  std::size_t end = start + 2;
  while (end < frames.size() && std::int64_t{frames[end]} - frames[end - 1] == step)
    ++end;
  return end - start;
}

}  // namespace

std::vector<int> parseFrames(std::string_view text) {
  std::vector<int> frames;
  std::unordered_set<int> taken;
  std::int64_t named = 0;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t comma = std::min(text.find(',', start), text.size());
    const std::string_view part = withoutBlanks(text.substr(start, comma - start));
    const std::optional<FrameRange> range = parseRange(part);
    if (const std::string beyond = frameBeyond(part); !range && !beyond.empty()) {
      fail(text, "frame " + quotable(beyond) + " is beyond the last that there can be, 2147483647");
    }
    if (!range) {
      fail(text, "\"" + quotable(part) +
                     "\" is no frame such as 7 or -7, nor a range such as 1-100, 1-99x2, 1-99:2 "
                     "or 100-1");
    }
    named += range->count();
    if (named > kMostFrames) fail(text, "more than a million frames");
    for (std::int64_t i = 0; i < range->count(); ++i) {
      const int frame = static_cast<int>(range->first + i * range->step);
      if (taken.insert(frame).second) frames.push_back(frame);
    }
    start = comma + 1;
  }
  return frames;
}

std::string frameListText(const std::vector<int>& frames) {
  std::string text;
  for (std::size_t start = 0; start < frames.size();) {
    std::size_t count = runLength(frames, start);
    if (count < kShortestRun) count = 1;
    text += (start == 0 ? "" : ",") + std::to_string(frames[start]);
    if (count > 1) {
      const std::int64_t step = std::int64_t{frames[start + 1]} - frames[start];
      text += "-" + std::to_string(frames[start + count - 1]);
      if (step != 1 && step != -1) text += "x" + std::to_string(step < 0 ? -step : step);
    }
    start += count;
  }
  return text;
}

}  // namespace vellumtide::cli
