// What the system lets this process do with the places it writes to.
#pragma once

#include <filesystem>
#include <optional>
#include <system_error>

#include "cli/files/output_target.h"

namespace vellumtide::cli {

// Of an existing file, and of a folder that is to take a new one. No error when it can be done as
// far as that shows without doing it.
std::error_code writingForbidden(const std::filesystem::path& file);
std::error_code addingForbidden(const std::filesystem::path& folder);

// Which of the process's own streams has the file behind the name, if any.
std::optional<OutputTarget::Kind> ownStream(const std::filesystem::path& path);

// An open stream to write to: one of the process's own, a pipe or a device.
class OpenStream {
 public:
  // Waits for a reader of a pipe. Throws filesystem_error.
  explicit OpenStream(const OutputTarget& target);
  OpenStream(const OpenStream&) = delete;
  OpenStream& operator=(const OpenStream&) = delete;
  ~OpenStream();

  // All the bytes. Throws filesystem_error.
  void write(const char* bytes, std::size_t count);

 private:
  std::filesystem::path path_;
  std::intptr_t file_;
};

}  // namespace vellumtide::cli
