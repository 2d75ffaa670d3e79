// What a file and a folder share. Nothing of them throws for a file-system failure; each operation
// answers false or an empty list. What the allocator throws when memory runs out passes on.
#pragma once

#include <string_view>

#include "services/jst/file_system.h"
#include "services/jst/text.h"

namespace vellumtide::_JST {

// What lies behind the last slash or back-slash of a path.
inline std::string_view nameOf(std::string_view path) {
  return path.substr(path.find_last_of("/\\") + 1);
}

template <class Allocator>
class _FileSys : public Object {
 public:
  using Text = String<Allocator>;

  const Text& path() const { return path_; }
  EntryKind kind() const { return kind_; }

  // Whether anything is at the path, of either kind. False for an empty path.
  bool exists() const { return !path_.empty() && pathExists(path_); }

  Text getName() const { return nameOf(path_); }

 protected:
  _FileSys(std::string_view path, EntryKind kind) : path_(path), kind_(kind) {}

 private:
  Text path_;
  EntryKind kind_;
};

}  // namespace vellumtide::_JST
