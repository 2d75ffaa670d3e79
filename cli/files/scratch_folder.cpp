#include "cli/files/scratch_folder.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <random>
#include <set>

#include "cli/files/remove_tree.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {

namespace fs = std::filesystem;

namespace {

std::mutex mutex;
std::set<fs::path> folders;
fs::path place;  // "" for the system's temporary files

// What the handler of a crash removes: it may only touch plain memory.
struct Slot {
  std::atomic<bool> taken{false}, filled{false};
  std::array<char, 4096> name{};
};
std::array<Slot, 8> slots;

int takeSlot(const fs::path& path) {
  const std::string name = utf8(path);
  for (std::size_t i = 0; i < slots.size(); ++i) {
    if (name.size() >= slots[i].name.size() || slots[i].taken.exchange(true)) continue;
    std::memcpy(slots[i].name.data(), name.c_str(), name.size() + 1);
    slots[i].filled = true;
    return static_cast<int>(i);
  }
  return -1;
}

[[noreturn]] void fail(const fs::path& folder, const std::error_code& error) {
  const char* named = std::getenv("TMPDIR");
  throw Failure(ExitStatus::Failed, "no temporary folder can be made in " + utf8(folder) +
                                        (named && *named ? " (TMPDIR): " : ": ") + error.message());
}

// Where the system keeps its temporary files, whether that exists or not.
fs::path temporaryFolder() {
  std::error_code failed;
  const fs::path folder = fs::temp_directory_path(failed);
  if (!failed) return folder;
  for (const char* variable : {"TMPDIR", "TMP", "TEMP", "TEMPDIR"}) {
    if (const char* named = std::getenv(variable); named && *named) return pathOf(named);
  }
  return "/tmp";
}

}  // namespace

ScratchFolder::ScratchFolder() {
  const fs::path parent = place.empty() ? temporaryFolder() : place;
  std::random_device random;
  std::error_code failed;
  bool made = false;
  while (!made && !failed) {
    char name[32];
    std::snprintf(name, sizeof name, "vellumtide-%08x%08x", random(), random());
    path_ = parent / name;
    made = fs::create_directory(path_, failed);
  }
  if (failed) fail(parent, failed);
  slot_ = takeSlot(path_);
  const std::lock_guard lock(mutex);
  folders.insert(path_);
  fs::permissions(path_, fs::perms::owner_all, failed);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
  const std::lock_guard lock(mutex);
  folders.erase(path_);
  if (slot_ < 0) return;
  slots[slot_].filled = false;
  slots[slot_].taken = false;
}

void ScratchFolder::makeIn(const fs::path& folder) {
  place = folder;
}

void ScratchFolder::removeAll() {
  const std::lock_guard lock(mutex);
  std::error_code ignored;
  for (const fs::path& path : folders)
    fs::remove_all(path, ignored);
}

void ScratchFolder::removeAllAtCrash() {
  for (const Slot& slot : slots) {
    if (slot.filled) removeTree(slot.name.data());
  }
}

}  // namespace vellumtide::cli
