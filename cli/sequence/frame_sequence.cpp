#include "cli/sequence/frame_sequence.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <mutex>
#include <string_view>

#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostDigits = 99;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Where the number goes in a name.
struct Place {
  std::size_t start, length;
  int width;
  bool zeros;  // filled up with zeros, not blanks
};

// place = "#"... | "@"... | "%" [ "0" ] [ digit [ digit ] ] "d"
std::optional<Place> placeAt(std::string_view name, std::size_t at) {
  if (name[at] == '#' || name[at] == '@') {
    const std::size_t end = std::min(name.find_first_not_of(name[at], at), name.size());
    return Place{at, end - at, static_cast<int>(std::min(end - at, kMostDigits)), true};
  }
  if (name[at] != '%') return {};
  std::size_t next = at + 1;
  const bool zeros = next < name.size() && name[next] == '0';
  if (zeros) ++next;
  int width = 0;
  for (int digits = 0; digits < 2 && next < name.size() && isDigit(name[next]); ++digits, ++next)
    width = 10 * width + (name[next] - '0');
  if (next >= name.size() || name[next] != 'd') return {};
  return Place{at, next + 1 - at, width, zeros};
}

std::optional<Place> findPlace(std::string_view name) {
  for (std::size_t i = name.find_first_of("#@%"); i != std::string_view::npos;
       i = name.find_first_of("#@%", i + 1)) {
    if (const std::optional<Place> place = placeAt(name, i)) return place;
  }
  return {};
}

std::string frameText(const Place& place, int frame) {
  char text[kMostDigits + 16];
  std::snprintf(text, sizeof text, place.zeros ? "%0*d" : "%*d", place.width, frame);
  return text;
}

// The frame whose number is written as this text.
std::optional<int> frameOf(const Place& place, std::string_view text) {
  const std::string_view digits = text.substr(std::min(text.find_first_not_of(' '), text.size()));
  int frame = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), frame);
  if (error != std::errc{} || frameText(place, frame) != text) return {};
  return frame;
}

// What the name holds between the two ends, of characters that numbers are made of. Names are
// compared as the file system keeps them: not every name there can be turned into UTF-8.
template <typename Text>
std::optional<std::string> between(const Text& name, const Text& before, const Text& after) {
  if (name.size() < before.size() + after.size()) return {};
  const std::size_t length = name.size() - before.size() - after.size();
  if (name.compare(0, before.size(), before) != 0) return {};
  if (name.compare(before.size() + length, after.size(), after) != 0) return {};
  std::string middle;
  for (const auto c : name.substr(before.size(), length)) {
    const char narrow = static_cast<char>(c);
    if (c != narrow || !(isDigit(narrow) || narrow == '-' || narrow == ' ')) return {};
    middle += narrow;
  }
  return middle;
}

// Calls action(file, place, number) for each file in the folder whose name has something that
// numbers are made of in the pattern's place.
template <typename Action>
void forEachNumbered(const fs::path& pattern, Action action) {
  const std::string name = utf8(pattern.filename());
  const std::optional<Place> place = findPlace(name);
  if (!place) return;
  const fs::path before = pathOf(name.substr(0, place->start));
  const fs::path after = pathOf(name.substr(place->start + place->length));
  const fs::path folder = pattern.has_parent_path() ? pattern.parent_path() : ".";
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const fs::path file = entry->path().filename();
    const std::optional<std::string> number =
        between(file.native(), before.native(), after.native());
    std::error_code ignored;
    if (number && !entry->is_directory(ignored)) action(file, *place, *number);
  }
}

bool isAbsent(const fs::path& path) {
  std::error_code ignored;
  return fs::status(path, ignored).type() == fs::file_type::not_found;
}

}  // namespace

bool isNumbered(const fs::path& pattern) {
  return findPlace(utf8(pattern.filename())).has_value();
}

fs::path frameName(const fs::path& pattern, int frame) {
  std::string name = utf8(pattern.filename());
  const std::optional<Place> place = findPlace(name);
  if (!place) return pattern;
  name.replace(place->start, place->length, frameText(*place, frame));
  return pattern.parent_path() / pathOf(name);
}

std::vector<int> framesOnDisk(const fs::path& pattern) {
  std::vector<int> frames;
  forEachNumbered(pattern, [&](const fs::path&, const Place& place, const std::string& number) {
    if (const std::optional<int> frame = frameOf(place, number)) frames.push_back(*frame);
  });
  std::sort(frames.begin(), frames.end());
  return frames;
}

std::vector<fs::path> otherSpellings(const fs::path& pattern) {
  std::vector<fs::path> files;
  forEachNumbered(pattern,
                  [&](const fs::path& file, const Place& place, const std::string& number) {
                    const bool isNumber = std::any_of(number.begin(), number.end(), isDigit);
                    if (isNumber && !frameOf(place, number)) files.push_back(file);
                  });
  std::sort(files.begin(), files.end());
  return files;
}

struct InputFrames::Listing {
  std::once_flag once;
  std::vector<int> frames;
};

InputFrames::InputFrames(const fs::path& pattern, Missing missing)
    : pattern_(pattern),
      missing_(missing),
      isStill_(!isNumbered(pattern) || !isAbsent(pattern)),
      listing_(std::make_shared<Listing>()) {}

const std::vector<int>& InputFrames::listing() const {
  std::call_once(listing_->once, [this] { listing_->frames = framesOnDisk(pattern_); });
  return listing_->frames;
}

std::optional<fs::path> InputFrames::file(int frame) const {
  if (isStill_) return pattern_;
  const fs::path name = frameName(pattern_, frame);
  if (missing_ == Missing::Stop || !isAbsent(name) || listing().empty()) return name;
  if (missing_ == Missing::Black) return {};
  const auto later = std::upper_bound(listing().begin(), listing().end(), frame);
  return frameName(pattern_, later == listing().begin() ? listing().front() : *(later - 1));
}

}  // namespace vellumtide::cli
