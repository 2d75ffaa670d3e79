// A file on its way: written under a hidden name beside its target and renamed when complete; for
// pipes, devices and standard output, written to a file of its own and sent there when complete.
// Every file that the program writes for somebody is one.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "cli/files/hidden_file.h"
#include "cli/files/output_target.h"
#include "cli/files/scratch_folder.h"

namespace vellumtide::cli {

class PendingFile {
 public:
  // Makes the empty file for `target`, see outputTarget(). May be used from several threads at a
  // time. Throws WriteRefusal.
  explicit PendingFile(const std::filesystem::path& target);
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;
  // Removes the file unless it was committed.
  ~PendingFile();

  // To write to. The extension is the target's.
  const std::filesystem::path& path() const { return path_; }

  // Gives the file its final name, replacing what stood there and keeping its permissions, or
  // sends it. Throws WriteRefusal.
  void commit();

 private:
  OutputTarget target_;
  std::optional<HiddenFile> hidden_;
  std::optional<ScratchFolder> folder_;  // for what is sent
  std::filesystem::path path_;
  int slot_ = -1;  // in the table of what a signal has to remove
};

// Writes a whole file of these bytes. Throws WriteRefusal.
void writeFile(const std::filesystem::path& target, std::string_view bytes);

// Removes every pending file of the process and lets no new one begin; for a process that is about
// to end. May be called from a signal handler and more than once.
void abandonPendingFiles();

}  // namespace vellumtide::cli
