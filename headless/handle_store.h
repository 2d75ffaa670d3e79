// Handle memory of the host with full accounting. A handle points at a pointer to its block; around
// every block lie guard zones; freed blocks are poisoned and kept a while, so that late writes and
// late frees are seen. Faults name the callback that met them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "aeapi/aeapi.h"
#include "headless/books.h"

namespace vellumtide::headless {

// Whose functions a block belongs to; a handle given to the other family's functions is a fault.
enum class BlockFamily { kHandle, kMemHandle, kPlain };

class HandleStore {
 public:
  explicit HandleStore(Books& books);
  ~HandleStore();
  HandleStore(const HandleStore&) = delete;
  HandleStore& operator=(const HandleStore&) = delete;

  // A new unlocked block; its bytes are 0xCD, or 0 with `clear`. Null when there is no memory.
  // `what` says what it is for ("" when the caller did not say).
  void** allocate(BlockFamily family, uint64_t size, const char* what, bool clear = false);

  // Each of these reports an unknown, freed or foreign handle under `caller` (a callback's name).
  void* lock(BlockFamily family, void** handle, const char* caller);
  bool unlock(BlockFamily family, void** handle, const char* caller);
  bool release(BlockFamily family, void** handle, const char* caller);
  // Moves the block always, so that stale pointers show. False: refused, nothing changed.
  bool resize(BlockFamily family, void** handle, uint64_t size, const char* caller);
  // Size in bytes; 0 for a bad handle.
  uint64_t size(BlockFamily family, void** handle, const char* caller);

  // Plain blocks (SPBasicSuite.AllocateBlock) are known by their address.
  void* allocatePlain(size_t size);
  bool releasePlain(void* address, const char* caller);
  void* resizePlain(void* address, size_t size, const char* caller);

  // The host's own lock on a handle while a command runs: it may be freed, but not resized.
  void hold(void** handle);
  void letGo(void** handle);
  // For the host's own reading of a module's data, without a fault: whether the handle is live, and
  // its bytes.
  bool isLive(void** handle) const;
  std::vector<uint8_t> bytes(void** handle) const;

  int64_t liveHandles() const { return static_cast<int64_t>(live_.size()); }
  int64_t locks() const { return locks_; }
  uint64_t liveBytes() const { return liveBytes_; }
  uint64_t allocations() const { return allocations_; }

  // Reports every live block written outside its bounds.
  void checkGuards();
  // Reports every freed block written since; done of itself when a block leaves quarantine.
  void checkFreedBlocks();
  // Reports every block still live as a leak, with size, purpose and the command it was made in.
  void reportLeaks();

 private:
  struct Block;
  Block* find(BlockFamily family, void** handle, const char* caller);
  void checkBlock(Block& block);
  void checkFreed(Block& block);
  void retire(std::unique_ptr<Block> block);
  void sayBadHandle(const void* handle, const char* caller);

  Books& books_;
  std::unordered_map<const void*, std::unique_ptr<Block>> live_;
  std::deque<std::unique_ptr<Block>> freed_;
  std::unordered_map<const void*, const Block*> freedByAddress_;
  std::unordered_map<const void*, Block*> plain_;
  uint64_t freedBytes_ = 0;
  int64_t locks_ = 0;
  uint64_t liveBytes_ = 0;
  uint64_t allocations_ = 0;
};

}  // namespace vellumtide::headless
