// A file on its way: written under a hidden name beside its target and renamed when complete.
#pragma once

#include <filesystem>

namespace vellumtide::cli {

class PendingFile {
 public:
  // Nothing is created yet; `target` may be a symbolic link, whose destination is then replaced.
  // May be used from several threads at a time. The first one makes INT and TERM remove what is
  // pending before they end the process.
  explicit PendingFile(const std::filesystem::path& target);
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;
  // Removes the file unless it was committed.
  ~PendingFile();

  const std::filesystem::path& path() const { return path_; }

  // Gives the file its final name, replacing what stood there. Throws filesystem_error.
  void commit();

 private:
  std::filesystem::path target_;
  std::filesystem::path path_;
  int slot_ = -1;  // in the table of what a signal has to remove
};

// Removes every pending file of the process and lets no new one begin; for a process that is about
// to end. May be called from a signal handler and more than once.
void abandonPendingFiles();

}  // namespace vellumtide::cli
