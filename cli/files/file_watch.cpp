#include "cli/files/file_watch.h"

namespace vellumtide::cli {
namespace {

constexpr int kLooksWhenThere = 1;
constexpr int kLooksWhenGone = 10;

}  // namespace

void FileWatch::watch(const std::vector<std::filesystem::path>& files) {
  for (const std::filesystem::path& file : files) {
    if (files_.contains(file)) continue;
    const FileStamp stamp = stampOf(file);
    files_[file] = {stamp, stamp};
  }
}

void FileWatch::expect(const std::vector<std::filesystem::path>& files) {
  for (const std::filesystem::path& file : files)
    files_.try_emplace(file);
}

bool FileWatch::look() {
  bool changed = false;
  for (auto& [file, state] : files_) {
    const FileStamp stamp = stampOf(file);
    state.looks = stamp == state.seen ? state.looks + 1 : 0;
    state.seen = stamp;
    if (stamp == state.known) continue;
    if (state.looks < (stamp.exists ? kLooksWhenThere : kLooksWhenGone)) continue;
    state.known = stamp;
    changed = true;
  }
  return changed;
}

}  // namespace vellumtide::cli
