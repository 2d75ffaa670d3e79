#pragma once

#include <filesystem>

namespace vellumtide::cli {

// An empty folder among the system's temporary files, or where `makeIn` says, removed with all it
// holds.
class ScratchFolder {
 public:
  // Throws Failure (ExitStatus::Failed) when none can be made.
  ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder();

  const std::filesystem::path& path() const { return path_; }

  // Has this process make its folders in another one: of a parent that removes what is left when
  // this process crashes. Empty stands for the system's temporary files again.
  static void makeIn(const std::filesystem::path& folder);

  // Removes the folders of all objects there are, for a process that ends without unwinding.
  static void removeAll();
  // The same for the handler of a crash: neither heap nor locks are touched.
  static void removeAllAtCrash();

 private:
  std::filesystem::path path_;
  int slot_ = -1;  // in the table of what a crash removes
};

}  // namespace vellumtide::cli
