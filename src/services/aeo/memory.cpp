#include "services/aeo/memory.h"

#include <algorithm>
#include <cstring>

namespace vellumtide::AEO {
namespace {

using MemorySuite = ScopedSuite<AEGP_MemorySuite1>;

// The handle's bytes for as long as the object lives; none when the host refuses.
class LockedBytes {
 public:
  LockedBytes(const MemorySuite& suite, AEGP_MemHandle handle) : suite_(suite), handle_(handle) {
    if (suite_->AEGP_GetMemHandleSize(handle, &size_)) return;
    if (suite_->AEGP_LockMemHandle(handle, &bytes_)) bytes_ = nullptr;
  }
  ~LockedBytes() {
    if (bytes_) suite_->AEGP_UnlockMemHandle(handle_);
  }
  LockedBytes(const LockedBytes&) = delete;
  LockedBytes& operator=(const LockedBytes&) = delete;

  const void* bytes() const { return bytes_; }
  std::size_t size() const { return size_; }

 private:
  const MemorySuite& suite_;
  AEGP_MemHandle handle_;
  void* bytes_ = nullptr;
  AEGP_MemSize size_ = 0;
};

}  // namespace

Memory::~Memory() {
  if (handle_) suite_->AEGP_FreeMemHandle(handle_);
}

template <class Unit>
std::optional<std::basic_string<Unit>> Memory::copyText() const {
  if (!handle_) return std::nullopt;
  const LockedBytes locked(suite_, handle_);
  if (!locked.bytes()) return std::nullopt;
  std::basic_string<Unit> text(locked.size() / sizeof(Unit), Unit{});
  std::memcpy(text.data(), locked.bytes(), text.size() * sizeof(Unit));
  text.erase(std::find(text.begin(), text.end(), Unit{}), text.end());
  return text;
}

std::optional<std::string> Memory::text() const {
  return copyText<char>();
}

std::optional<std::u16string> Memory::utf16Text() const {
  return copyText<char16_t>();
}

}  // namespace vellumtide::AEO
