// Files that change, found by looking again and again, which works on every platform and on file
// systems of other machines.
#pragma once

#include <filesystem>
#include <map>
#include <vector>

#include "cli/files/file_stamp.h"

namespace vellumtide::cli {

// A file has changed when it is another than before and has been left alone between two looks, so
// that half-written ones are not taken; a file that is gone, when it stays away for ten looks,
// because editors replace files by new ones.
class FileWatch {
 public:
  // Watches these, from their present state on. To be called before they are read. Those that are
  // watched already stay as they are.
  void watch(const std::vector<std::filesystem::path>& files);
  // Watches these as well; those that are new to the watch are taken for absent so far.
  void expect(const std::vector<std::filesystem::path>& files);

  // Looks at all of them. Returns whether one has changed since the last time that this said so.
  bool look();

 private:
  struct State {
    FileStamp known, seen;
    int looks = 0;  // since `seen` changed
  };
  std::map<std::filesystem::path, State> files_;
};

}  // namespace vellumtide::cli
