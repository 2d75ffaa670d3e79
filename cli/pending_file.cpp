#include "cli/pending_file.h"
#include "cli/utf8_path.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>

namespace vellumtide::cli {
namespace {

// What the signal handler removes: a handler may only touch plain memory.
std::array<char, 4096> pendingName{};
std::atomic<bool> hasPending{false};

extern "C" void removePendingAndEnd(int signalNumber) {
  if (hasPending) std::remove(pendingName.data());
  std::signal(signalNumber, SIG_DFL);
  std::raise(signalNumber);
}

void watch(const std::filesystem::path& path) {
  const std::string name = utf8(path);
  if (name.size() >= pendingName.size()) return;
  std::memcpy(pendingName.data(), name.c_str(), name.size() + 1);
  hasPending = true;
  std::signal(SIGINT, removePendingAndEnd);
  std::signal(SIGTERM, removePendingAndEnd);
}

std::filesystem::path resolved(const std::filesystem::path& target) {
  std::error_code failed;
  const std::filesystem::path real = std::filesystem::canonical(target, failed);
  return failed ? target : real;
}

}  // namespace

PendingFile::PendingFile(const std::filesystem::path& target) : target_(resolved(target)) {
  char token[16];
  std::snprintf(token, sizeof token, ".%08x", std::random_device{}());
  // The extension stays last, because it decides the format.
  std::string name = ".";
  name += utf8(target_.stem()) + token + utf8(target_.extension());
  path_ = target_;
  path_.replace_filename(pathOf(name));
  watch(path_);
}

PendingFile::~PendingFile() {
  hasPending = false;
  std::error_code ignored;
  if (!path_.empty()) std::filesystem::remove(path_, ignored);
}

void PendingFile::commit() {
  std::filesystem::rename(path_, target_);
  path_.clear();
}

}  // namespace vellumtide::cli
