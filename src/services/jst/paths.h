// Path objects: a file that can be opened, a folder that can be listed. Nothing here throws for a
// file-system failure; each operation answers false or an empty list. What the allocator throws
// when memory runs out passes to the caller.
#pragma once

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "services/jst/file_system.h"
#include "services/jst/text.h"

namespace vellumtide::_JST {

// What a file and a folder share.
template <template <class> class Allocator>
class _FileSys : public Object {
 public:
  using Text = String<Allocator>;

  const Text& path() const { return path_; }
  EntryKind kind() const { return kind_; }

  // Whether anything is at the path, of either kind. False for an empty path.
  bool exists() const { return !path_.empty() && pathExists(path_); }

  // What lies behind the last slash or back-slash.
  Text getName() const { return path_.view().substr(path_.view().find_last_of("/\\") + 1); }

 protected:
  _FileSys(std::string_view path, EntryKind kind) : path_(path), kind_(kind) {}

 private:
  Text path_;
  EntryKind kind_;
};

template <template <class> class Allocator>
class File : public _FileSys<Allocator> {
 public:
  enum class Mode { None, Read, Write, ReadWrite, Append };

  // Larger program files are refused like unreadable ones.
  static constexpr std::size_t kReadLimit = std::size_t{64} << 20;

  explicit File(std::string_view path) : _FileSys<Allocator>(path, EntryKind::File) {}
  ~File() override { close(); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  Mode mode() const { return mode_; }

  // 'r' reads, 'w' writes a new file, 'e' reads and writes an existing one, 'a' appends. Closes an
  // open stream first; true when a stream is open afterwards.
  bool open(char mode) {
    close();
    const Opening* opening = openingOf(mode);
    if (!opening || this->path().empty()) return false;
    stream_ = openStream(this->path(), opening->streamMode);
    if (stream_) mode_ = opening->mode;
    return stream_ != nullptr;
  }

  bool write(const void* bytes, std::size_t count) {
    return stream_ && std::fwrite(bytes, 1, count, stream_) == count;
  }

  // Everything from the stream's position to its end; nothing when that is more than `limit` bytes
  // or cannot be read.
  std::optional<std::string> readAll(std::size_t limit = kReadLimit) {
    if (!stream_) return std::nullopt;
    std::string text;
    std::size_t used = 0;
    for (std::size_t chunk = 0x10000;; chunk = std::min(chunk * 2, std::size_t{4} << 20)) {
      text.resize(used + chunk);
      const std::size_t count = std::fread(text.data() + used, 1, chunk, stream_);
      used += count;
      if (used > limit || std::ferror(stream_)) return std::nullopt;
      if (count < chunk) break;
    }
    text.resize(used);
    return text;
  }

  // False when what was written did not all reach the file.
  bool close() {
    const bool closed = !stream_ || std::fclose(stream_) == 0;
    stream_ = nullptr;
    mode_ = Mode::None;
    return closed;
  }

  bool remove() { return !this->path().empty() && eraseFile(this->path()); }

 private:
  struct Opening {
    char letter;
    Mode mode;
    const char* streamMode;
  };

  static const Opening* openingOf(char letter) {
    static constexpr Opening openings[] = {{'r', Mode::Read, "rb"},
                                           {'w', Mode::Write, "wb"},
                                           {'e', Mode::ReadWrite, "rb+"},
                                           {'a', Mode::Append, "ab"}};
    for (const Opening& opening : openings) {
      if (opening.letter == letter) return &opening;
    }
    return nullptr;
  }

  std::FILE* stream_ = nullptr;
  Mode mode_ = Mode::None;
};

template <template <class> class Allocator>
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
