// Keeps apart the files that a command reads and those that it writes, by what they are and not by
// how they are called.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "cli/files/file_identity.h"

namespace vellumtide::cli {

class FileGuard {
 public:
  // `role` goes before the name in messages: "the input".
  void reads(const char* role, const std::filesystem::path& file);
  // `option` likewise: "-o". Throws Failure (ExitStatus::Usage) when the file is one that is read,
  // or one that another option writes. Nothing need be read or written yet.
  void writes(const char* option, const std::filesystem::path& file);

 private:
  struct Use {
    const char* role;
    std::filesystem::path file;
    bool isWritten;
  };

  std::map<FileIdentity, Use> uses_;
};

// Throws Failure (ExitStatus::Usage) for a picture that would go to a terminal.
void requireNoTerminal(const char* option, const std::filesystem::path& file);

}  // namespace vellumtide::cli
