#include "cli/files/pending_file.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <thread>

#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

// What a signal handler removes: a handler may only touch plain memory.
struct Slot {
  std::atomic<bool> taken{false}, filled{false};
  std::array<char, 4096> name{};
};
std::array<Slot, 64> slots;
std::atomic<bool> abandoned{false};

// While the process ends, its other threads make no new files.
void stayOutOfTheWay() {
  while (abandoned)
    std::this_thread::sleep_for(std::chrono::seconds(1));
}

int takeSlot(const std::filesystem::path& path) {
  const std::string name = utf8(path);
  if (name.size() >= slots[0].name.size()) return -1;
  for (std::size_t i = 0; i < slots.size(); ++i) {
    if (slots[i].taken.exchange(true)) continue;
    std::memcpy(slots[i].name.data(), name.c_str(), name.size() + 1);
    slots[i].filled = true;
    return static_cast<int>(i);
  }
  return -1;
}

}  // namespace

PendingFile::PendingFile(const std::filesystem::path& target) : target_(outputTarget(target)) {
  stayOutOfTheWay();
  try {
    if (target_.kind == OutputTarget::Kind::File) {
      hidden_.emplace(target_);
      path_ = hidden_->path();
      slot_ = takeSlot(path_);
    } else {
      folder_.emplace();
      path_ = folder_->path() / "whole";
      path_ += target_.path.extension();
    }
  } catch (const std::filesystem::filesystem_error& error) {
    throw WriteRefusal(error.code().message());
  }
  if (abandoned) hidden_.reset();  // made while the others were removed
  stayOutOfTheWay();
}

PendingFile::~PendingFile() {
  hidden_.reset();
  if (slot_ < 0) return;
  slots[slot_].filled = false;
  slots[slot_].taken = false;
}

void PendingFile::commit() {
  if (!hidden_) return sendFile(path_, target_);
  try {
    hidden_->rename();
  } catch (const std::filesystem::filesystem_error& error) {
    throw WriteRefusal(error.code().message());
  }
}

void writeFile(const std::filesystem::path& target, std::string_view bytes) {
  PendingFile pending(target);
  std::ofstream file(pending.path(), std::ios::binary);
  errno = 0;
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw WriteRefusal(lastReason());
  pending.commit();
}

void abandonPendingFiles() {
  abandoned = true;
  for (Slot& slot : slots) {
    if (slot.filled) std::remove(slot.name.data());
  }
}

}  // namespace vellumtide::cli
