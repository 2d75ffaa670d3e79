// What a name leads to that somebody asked to write to.
#pragma once

#include <filesystem>
#include <stdexcept>

namespace vellumtide::cli {

// Why nothing can be written to a name, in words that follow "cannot be written: ".
struct WriteRefusal : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct OutputTarget {
  enum class Kind {
    File,    // regular, or not there yet: replaced whole
    Stream,  // a pipe or a character device: written into
    Output,  // standard output: "-", or a name for the file behind it
    Error,   // standard error, by a name for the file behind it
  };

  Kind kind = Kind::File;
  std::filesystem::path path;  // with links followed to where they lead
  bool isThere = true;         // when it was looked at
};

// Follows links, also to where nothing is yet. Throws WriteRefusal for folders, block devices and
// sockets, for files and folders that may not be written, for a folder that is not there and for
// links in a circle. Opens nothing.
OutputTarget outputTarget(const std::filesystem::path& name);

// Whether the name is "-".
bool isStandardOutput(const std::filesystem::path& name);

// Sends the bytes of the file to a target that is no file. Throws WriteRefusal.
void sendFile(const std::filesystem::path& file, const OutputTarget& target);

}  // namespace vellumtide::cli
