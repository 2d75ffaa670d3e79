// The unfinished file beside its target: hidden, locked, and gone if it does not get the name.
#pragma once

#include <filesystem>
#include <optional>

#include "cli/files/locked_file.h"
#include "cli/files/output_target.h"

namespace vellumtide::cli {

class HiddenFile {
 public:
  // Makes the file for a target that is a file, and removes those that earlier processes left for
  // the same target and nobody has locked. Throws filesystem_error.
  explicit HiddenFile(const OutputTarget& target);
  HiddenFile(const HiddenFile&) = delete;
  HiddenFile& operator=(const HiddenFile&) = delete;
  // Removes the file unless it was renamed.
  ~HiddenFile();

  const std::filesystem::path& path() const { return path_; }

  // Gives the file the target's name, permissions and, where allowed, owners. Throws
  // filesystem_error.
  void rename();

 private:
  bool makeAt(const std::filesystem::path& path);

  OutputTarget target_;
  std::filesystem::path path_;
  std::optional<LockedFile> file_;
};

}  // namespace vellumtide::cli
