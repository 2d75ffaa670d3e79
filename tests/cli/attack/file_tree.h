// All that a folder holds, as it can be compared with what it held before.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace vellumtide::cli {

// What a name stands for. Regular files also keep their number and time, so that a file that was
// written again with the same bytes has changed.
struct TreeEntry {
  std::filesystem::file_type type{};
  unsigned mode = 0, owner = 0, group = 0;
  std::uint64_t device = 0, number = 0;
  std::int64_t modified = 0;
  std::string content;  // bytes of a regular file, destination of a link

  bool operator==(const TreeEntry&) const = default;
};

// By names relative to the folder, links not followed.
using FileTree = std::map<std::string, TreeEntry>;

FileTree treeOf(const std::filesystem::path& folder);

// "+new ~changed -gone ", in the order of the names.
std::string changesBetween(const FileTree& before, const FileTree& after);

}  // namespace vellumtide::cli
