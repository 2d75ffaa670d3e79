// A file that can be opened, read, written and removed.
#pragma once

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "services/jst/file_sys.h"

namespace vellumtide::_JST {

template <class Allocator>
class File : public _FileSys<Allocator> {
 public:
  enum class Mode { None, Read, Write, ReadWrite, Append };

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

  // Everything from the stream's position to its end, or one byte more than `limit` when that is
  // longer; nothing when it cannot be read.
  std::optional<std::string> readAll(std::size_t limit) {
    if (!stream_) return std::nullopt;
    std::string text;
    std::size_t used = 0;
    for (std::size_t chunk = 0x10000; used <= limit;) {
      text.resize(used + chunk);
      const std::size_t count = std::fread(text.data() + used, 1, chunk, stream_);
      used += count;
      if (std::ferror(stream_)) return std::nullopt;
      if (count < chunk) break;
      chunk = std::min(chunk * 2, std::size_t{4} << 20);
    }
    text.resize(std::min(used, limit + 1));
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

}  // namespace vellumtide::_JST
