#include "cli/files/hidden_file.h"

#include <algorithm>
#include <string>

#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

constexpr int kMostWriters = 64;               // of one target at a time
constexpr std::size_t kShortName = 64;         // bytes that every file system has for a name
constexpr std::size_t kLongestExtension = 16;  // that could mean a format

// Not in the middle of a character.
std::string cut(std::string text, std::size_t size) {
  if (size >= text.size()) return text;
  while (size > 0 && (text[size] & 0xC0) == 0x80)
    --size;
  return text.substr(0, size);
}

// The same for every process, so that it finds what others left. The extension stays last, because
// it decides the format; a name that is about as long as names may be grows no longer.
fs::path hiddenName(const fs::path& target, int number) {
  const std::string stem = utf8(target.stem());
  std::string extension = utf8(target.extension());
  if (extension.size() > kLongestExtension) extension.clear();
  const std::string rest = ".unfinished" + std::to_string(number) + extension;
  const std::size_t most = std::max(kShortName, utf8(target.filename()).size());
  const std::size_t room = most > rest.size() + 1 ? most - rest.size() - 1 : 0;
  fs::path path = target;
  path.replace_filename(pathOf("." + cut(stem, room) + rest));
  return path;
}

bool isThere(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(path, ignored));
}

}  // namespace

HiddenFile::HiddenFile(const OutputTarget& target) : target_(target) {
  int number = 0;
  while (!makeAt(hiddenName(target.path, number))) {
    if (++number < kMostWriters) continue;
    throw fs::filesystem_error("open", target.path, std::make_error_code(std::errc::file_exists));
  }
  for (fs::path other = hiddenName(target.path, ++number); isThere(other);
       other = hiddenName(target.path, ++number))
    LockedFile::removeAbandoned(other);
}

bool HiddenFile::makeAt(const fs::path& path) {
  const fs::path model = target_.isThere ? target_.path : fs::path();
  for (int tries = 0; tries < 2 && !file_; ++tries) {
    if (tries > 0) LockedFile::removeAbandoned(path);
    if (std::optional<LockedFile> made = LockedFile::make(path, model))
      file_.emplace(std::move(*made));
  }
  if (file_) path_ = path;
  return file_.has_value();
}

HiddenFile::~HiddenFile() {
  std::error_code ignored;
  if (!path_.empty()) fs::remove(path_, ignored);
}

void HiddenFile::rename() {
  file_->becomeLike(target_.path);
  fs::rename(path_, target_.path);
  path_.clear();
}

}  // namespace vellumtide::cli
