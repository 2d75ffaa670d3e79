#include "headless/handle_store.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace vellumtide::headless {
namespace {

constexpr size_t kGuardBytes = 32;
constexpr uint8_t kGuardByte = 0xFD;
constexpr uint8_t kFreshByte = 0xCD;
constexpr uint8_t kFreedByte = 0xDD;
constexpr uint64_t kMaxFreedBytes = 16 << 20;
constexpr size_t kMaxFreedBlocks = 4096;
constexpr uint64_t kMaxBlockBytes = uint64_t{1} << 40;

const char* familyName(BlockFamily family) {
  switch (family) {
    case BlockFamily::kHandle:
      return "handle";
    case BlockFamily::kMemHandle:
      return "memory handle";
    case BlockFamily::kPlain:
      return "block";
  }
  return "block";
}

bool isFilledWith(const uint8_t* bytes, size_t count, uint8_t value) {
  // Comparing a range with itself, one byte on, is a memcmp over the whole range.
  return count == 0 || (bytes[0] == value && std::memcmp(bytes, bytes + 1, count - 1) == 0);
}

}  // namespace

struct HandleStore::Block {
  void* data = nullptr;  // first: the handle is this member's address
  std::unique_ptr<uint8_t[]> bytes;
  uint64_t size = 0;
  int lockCount = 0;
  int holds = 0;
  BlockFamily family = BlockFamily::kHandle;
  bool damageSaid = false;
  uint64_t serial = 0;
  std::string what;
  std::string madeIn;
  std::string freedBy;

  void** handle() { return &data; }
  size_t wholeSize() const { return static_cast<size_t>(size) + 2 * kGuardBytes; }

  // False when there is no memory.
  bool make(uint64_t newSize, uint8_t fill) {
    if (newSize > kMaxBlockBytes) return false;
    const size_t whole = static_cast<size_t>(newSize) + 2 * kGuardBytes;
    bytes.reset(new (std::nothrow) uint8_t[whole]);
    if (!bytes) return false;
    size = newSize;
    std::memset(bytes.get(), kGuardByte, kGuardBytes);
    std::memset(bytes.get() + kGuardBytes, fill, static_cast<size_t>(size));
    std::memset(bytes.get() + kGuardBytes + size, kGuardByte, kGuardBytes);
    data = bytes.get() + kGuardBytes;
    return true;
  }

  std::string text() const {
    std::string text = std::string(familyName(family)) + " of " + std::to_string(size) + " bytes";
    if (!what.empty()) text += " \"" + what + "\"";
    return text + " (no. " + std::to_string(serial) + ", made in " +
           (madeIn.empty() ? "no command" : madeIn) + ")";
  }
};

HandleStore::HandleStore(Books& books) : books_(books) {}
HandleStore::~HandleStore() = default;

void** HandleStore::allocate(BlockFamily family, uint64_t size, const char* what, bool clear) {
  auto block = std::make_unique<Block>();
  if (!block->make(size, clear ? 0 : kFreshByte)) return nullptr;
  block->family = family;
  block->serial = ++allocations_;
  if (what) block->what = what;
  block->madeIn = books_.command();
  liveBytes_ += size;
  void** handle = block->handle();
  live_.emplace(handle, std::move(block));
  return handle;
}

void HandleStore::sayBadHandle(const void* handle, const char* caller) {
  if (!handle) return books_.fault(std::string(caller) + " was given a null handle");
  const auto freed = freedByAddress_.find(handle);
  if (freed == freedByAddress_.end()) {
    return books_.fault(std::string(caller) + " was given an unknown handle");
  }
  books_.fault(std::string(caller) + " was given a freed handle: " + freed->second->text() +
               ", freed by " + freed->second->freedBy);
}

HandleStore::Block* HandleStore::find(BlockFamily family, void** handle, const char* caller) {
  const auto found = live_.find(handle);
  if (found == live_.end()) {
    sayBadHandle(handle, caller);
    return nullptr;
  }
  Block* block = found->second.get();
  if (block->family != family) {
    books_.fault(std::string(caller) + " was given a " + block->text() + ", not a " +
                 familyName(family));
    return nullptr;
  }
  // A handle's own cell is the host's; a module that changed it has lost the block.
  if (block->data != block->bytes.get() + kGuardBytes) {
    books_.fault(std::string(caller) + ": the pointer in a handle was changed: " + block->text());
    block->data = block->bytes.get() + kGuardBytes;
  }
  return block;
}

void* HandleStore::lock(BlockFamily family, void** handle, const char* caller) {
  Block* block = find(family, handle, caller);
  if (!block) return nullptr;
  ++block->lockCount;
  ++locks_;
  return block->data;
}

bool HandleStore::unlock(BlockFamily family, void** handle, const char* caller) {
  Block* block = find(family, handle, caller);
  if (!block) return false;
  checkBlock(*block);
  if (block->lockCount == 0) {
    books_.fault(std::string(caller) + " was given a handle that is not locked: " + block->text());
    return false;
  }
  --block->lockCount;
  --locks_;
  return true;
}

void HandleStore::retire(std::unique_ptr<Block> block) {
  std::memset(block->data, kFreedByte, static_cast<size_t>(block->size));
  freedBytes_ += block->wholeSize();
  freedByAddress_[block->family == BlockFamily::kPlain
                      ? block->data
                      : static_cast<const void*>(block->handle())] = block.get();
  freed_.push_back(std::move(block));
  while (freed_.size() > kMaxFreedBlocks || freedBytes_ > kMaxFreedBytes) {
    Block& oldest = *freed_.front();
    checkFreed(oldest);
    freedBytes_ -= oldest.wholeSize();
    freedByAddress_.erase(oldest.family == BlockFamily::kPlain
                              ? oldest.data
                              : static_cast<const void*>(oldest.handle()));
    freed_.pop_front();
  }
}

bool HandleStore::release(BlockFamily family, void** handle, const char* caller) {
  Block* block = find(family, handle, caller);
  if (!block) return false;
  checkBlock(*block);
  if (block->lockCount > 0) {
    books_.fault(std::string(caller) + " was given a handle locked " +
                 std::to_string(block->lockCount) + " times: " + block->text());
    locks_ -= block->lockCount;
  }
  block->freedBy = caller;
  liveBytes_ -= block->size;
  auto node = live_.extract(handle);
  retire(std::move(node.mapped()));
  return true;
}

bool HandleStore::resize(BlockFamily family, void** handle, uint64_t size, const char* caller) {
  Block* block = find(family, handle, caller);
  if (!block) return false;
  checkBlock(*block);
  if (block->holds > 0 || (block->lockCount > 0 && family == BlockFamily::kMemHandle)) {
    books_.fault(std::string(caller) + " was given a locked handle: " + block->text());
    return false;
  }
  // The old block goes through quarantine under a record of its own.
  auto old = std::make_unique<Block>();
  *old = Block{block->data, std::move(block->bytes), block->size, 0,
               0,           block->family,           false,       block->serial,
               block->what, block->madeIn,           caller};
  if (!block->make(size, kFreshByte)) {
    block->bytes = std::move(old->bytes);
    block->data = block->bytes.get() + kGuardBytes;
    return false;
  }
  std::memcpy(block->data, old->data, static_cast<size_t>(std::min(size, old->size)));
  liveBytes_ += size - old->size;
  retire(std::move(old));
  return true;
}

uint64_t HandleStore::size(BlockFamily family, void** handle, const char* caller) {
  const Block* block = find(family, handle, caller);
  return block ? block->size : 0;
}

void* HandleStore::allocatePlain(size_t size) {
  void** handle = allocate(BlockFamily::kPlain, size, "");
  if (!handle) return nullptr;
  plain_[*handle] = live_.at(handle).get();
  return *handle;
}

bool HandleStore::releasePlain(void* address, const char* caller) {
  const auto found = plain_.find(address);
  if (found == plain_.end()) {
    sayBadHandle(address, caller);
    return false;
  }
  void** handle = found->second->handle();
  plain_.erase(found);
  return release(BlockFamily::kPlain, handle, caller);
}

void* HandleStore::resizePlain(void* address, size_t size, const char* caller) {
  const auto found = plain_.find(address);
  if (found == plain_.end()) {
    sayBadHandle(address, caller);
    return nullptr;
  }
  Block* block = found->second;
  if (!resize(BlockFamily::kPlain, block->handle(), size, caller)) return nullptr;
  plain_.erase(address);
  plain_[block->data] = block;
  return block->data;
}

void HandleStore::hold(void** handle) {
  const auto found = live_.find(handle);
  if (found != live_.end()) ++found->second->holds;
}

void HandleStore::letGo(void** handle) {
  const auto found = live_.find(handle);
  if (found != live_.end() && found->second->holds > 0) --found->second->holds;
}

bool HandleStore::isLive(void** handle) const {
  return live_.count(handle) != 0;
}

std::vector<uint8_t> HandleStore::bytes(void** handle) const {
  const auto found = live_.find(handle);
  if (found == live_.end()) return {};
  const auto* data = static_cast<const uint8_t*>(found->second->data);
  return {data, data + found->second->size};
}

void HandleStore::checkBlock(Block& block) {
  if (block.damageSaid) return;
  const uint8_t* bytes = block.bytes.get();
  const bool before = !isFilledWith(bytes, kGuardBytes, kGuardByte);
  const bool behind = !isFilledWith(bytes + kGuardBytes + block.size, kGuardBytes, kGuardByte);
  if (!before && !behind) return;
  block.damageSaid = true;
  books_.fault(std::string("memory was written ") +
               (before && behind ? "before and behind"
                : before         ? "before"
                                 : "behind") +
               " a " + block.text());
}

void HandleStore::checkFreed(Block& block) {
  if (block.damageSaid) return;
  const uint8_t* bytes = block.bytes.get() + kGuardBytes;
  if (isFilledWith(bytes, static_cast<size_t>(block.size), kFreedByte)) return;
  block.damageSaid = true;
  books_.fault("memory was written after it was freed or moved: " + block.text() + ", by " +
               block.freedBy);
}

void HandleStore::checkGuards() {
  for (auto& [handle, block] : live_)
    checkBlock(*block);
}

void HandleStore::checkFreedBlocks() {
  for (auto& block : freed_)
    checkFreed(*block);
}

void HandleStore::reportLeaks() {
  for (const auto& [handle, block] : live_) {
    std::string text = "leaked a " + block->text();
    if (block->lockCount > 0) text += ", locked " + std::to_string(block->lockCount) + " times";
    books_.fault(text);
  }
}

}  // namespace vellumtide::headless
