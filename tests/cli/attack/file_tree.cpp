#include "file_tree.h"

#include <sys/stat.h>

#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

TreeEntry entryOf(const fs::path& path) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0) throw std::runtime_error(path.string() + " is unreadable");
  TreeEntry entry;
  entry.type = fs::symlink_status(path).type();
  entry.mode = status.st_mode & 07777u;
  entry.owner = status.st_uid;
  entry.group = status.st_gid;
  if (entry.type == fs::file_type::symlink) {
    entry.content = fs::read_symlink(path).string();
  } else if (entry.type == fs::file_type::regular) {
    std::ifstream file(path, std::ios::binary);
    entry.content.assign(std::istreambuf_iterator<char>(file), {});
    entry.number = status.st_ino;
    entry.modified = std::int64_t{status.st_mtim.tv_sec} * 1000000000 + status.st_mtim.tv_nsec;
  } else {
    entry.device = status.st_rdev;
    // Folders get new times when hidden files come and go in them, which is no change.
    if (entry.type != fs::file_type::directory) entry.number = status.st_ino;
  }
  return entry;
}

}  // namespace

FileTree treeOf(const fs::path& folder) {
  FileTree tree;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    tree[entry.path().lexically_relative(folder).string()] = entryOf(entry.path());
  return tree;
}

std::string changesBetween(const FileTree& before, const FileTree& after) {
  std::set<std::string> names;
  for (const FileTree* tree : {&before, &after}) {
    for (const auto& [name, entry] : *tree)
      names.insert(name);
  }
  std::string changes;
  for (const std::string& name : names) {
    const auto was = before.find(name), is = after.find(name);
    if (was == before.end()) {
      changes += "+" + name + " ";
    } else if (is == after.end()) {
      changes += "-" + name + " ";
    } else if (was->second != is->second) {
      changes += "~" + name + " ";
    }
  }
  return changes;
}

}  // namespace vellumtide::cli
