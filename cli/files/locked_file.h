// A file that other processes can tell is being written: it is locked for as long.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace vellumtide::cli {

class LockedFile {
 public:
  // Makes the empty file, readable for nobody who may not read `model`, if that is a name and
  // exists. Nothing when there is a file of that name. Throws filesystem_error.
  static std::optional<LockedFile> make(const std::filesystem::path& path,
                                        const std::filesystem::path& model);
  // Removes the file unless it is locked, or its file system has no locks.
  static void removeAbandoned(const std::filesystem::path& path) noexcept;

  LockedFile(LockedFile&& other) noexcept;
  LockedFile& operator=(LockedFile&& other) = delete;
  // Ends the lock.
  ~LockedFile();

  // Permissions of `model`, if that exists, and its owners as far as the system lets us.
  void becomeLike(const std::filesystem::path& model);

 private:
  explicit LockedFile(std::intptr_t file) : file_(file) {}

  std::intptr_t file_;  // the system's descriptor or handle
};

}  // namespace vellumtide::cli
