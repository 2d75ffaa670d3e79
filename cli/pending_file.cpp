#include "cli/pending_file.h"

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <random>
#include <string>
#include <thread>

#include "cli/utf8_path.h"

namespace vellumtide::cli {
namespace {

// What a signal handler removes: a handler may only touch plain memory.
struct Slot {
  std::atomic<bool> taken{false}, filled{false};
  std::array<char, 4096> name{};
};
std::array<Slot, 64> slots;
std::atomic<bool> abandoned{false};

extern "C" void removePendingAndEnd(int signalNumber) {
  abandonPendingFiles();
  std::signal(signalNumber, SIG_DFL);
  std::raise(signalNumber);
}

// A program that handles the signals itself calls abandonPendingFiles().
void watchSignals() {
  for (int signalNumber : {SIGINT, SIGTERM}) {
    const auto before = std::signal(signalNumber, removePendingAndEnd);
    if (before != SIG_DFL && before != removePendingAndEnd) std::signal(signalNumber, before);
  }
}

int takeSlot(const std::filesystem::path& path) {
  static std::once_flag watched;
  std::call_once(watched, watchSignals);
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

std::filesystem::path resolved(const std::filesystem::path& target) {
  std::error_code failed;
  const std::filesystem::path real = std::filesystem::canonical(target, failed);
  return failed ? target : real;
}

std::string randomToken() {
  static std::mutex mutex;
  static std::random_device device;
  const std::lock_guard lock(mutex);
  char token[16];
  std::snprintf(token, sizeof token, ".%08x", device());
  return token;
}

}  // namespace

PendingFile::PendingFile(const std::filesystem::path& target) : target_(resolved(target)) {
  // The process ends; its other threads only have to stay out of the way.
  while (abandoned)
    std::this_thread::sleep_for(std::chrono::seconds(1));
  // The extension stays last, because it decides the format.
  const std::string name = "." + utf8(target_.stem()) + randomToken() + utf8(target_.extension());
  path_ = target_;
  path_.replace_filename(pathOf(name));
  slot_ = takeSlot(path_);
}

PendingFile::~PendingFile() {
  std::error_code ignored;
  if (!path_.empty()) std::filesystem::remove(path_, ignored);
  if (slot_ < 0) return;
  slots[slot_].filled = false;
  slots[slot_].taken = false;
}

void PendingFile::commit() {
  std::filesystem::rename(path_, target_);
  path_.clear();
}

void abandonPendingFiles() {
  abandoned = true;
  for (Slot& slot : slots) {
    if (slot.filled) std::remove(slot.name.data());
  }
}

}  // namespace vellumtide::cli
