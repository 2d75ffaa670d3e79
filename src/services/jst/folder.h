// A folder that can be made, removed and listed.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "services/jst/file_sys.h"

namespace vellumtide::_JST {

template <class Allocator>
class Folder : public _FileSys<Allocator> {
 public:
  using Paths = Array<String<Allocator>, Allocator>;

  explicit Folder(std::string_view path) : _FileSys<Allocator>(path, EntryKind::Folder) {}

  bool create() { return !this->path().empty() && makeFolder(this->path()); }
  bool remove() { return !this->path().empty() && eraseFolder(this->path()); }

  // Full paths: the folder's path, a back-slash (on every platform) and the entry's name, in the
  // order the file system gives them.
  Paths listFiles() const { return list(EntryKind::File); }
  Paths listFolders() const { return list(EntryKind::Folder); }

 private:
  Paths list(EntryKind kind) const {
    Paths paths;
    for (const std::string& name : entryNames(this->path(), kind)) {
      String<Allocator> path = this->path();
      path += "\\";
      path += name;
      paths.push(std::move(path));
    }
    return paths;
  }
};

}  // namespace vellumtide::_JST
