// A file on its way: written under a hidden name beside its target and renamed when complete.
#pragma once

#include <filesystem>

namespace vellumtide::cli {

class PendingFile {
 public:
  // Nothing is created yet; `target` may be a symbolic link, whose destination is then replaced.
  explicit PendingFile(const std::filesystem::path& target);
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;
  // Removes the file unless it was committed; so does a signal that ends the process.
  ~PendingFile();

  const std::filesystem::path& path() const { return path_; }

  // Gives the file its final name, replacing what stood there. Throws filesystem_error.
  void commit();

 private:
  std::filesystem::path target_;
  std::filesystem::path path_;
};

}  // namespace vellumtide::cli
