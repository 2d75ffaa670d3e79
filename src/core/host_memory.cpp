#include "core/host_memory.h"

#include <cstdint>
#include <cstring>
#include <limits>

#include "core/command_scope.h"

namespace vellumtide {
namespace {

constexpr std::size_t kHeaderSize = 8;
static_assert(sizeof(PF_Handle) == kHeaderSize);

}  // namespace

void* allocateHostMemory(PF_InData& inData, std::size_t size) noexcept {
  if (!inData.utils || size > std::numeric_limits<std::size_t>::max() - kHeaderSize) return nullptr;
  PF_Handle handle = inData.utils->host_new_handle(size + kHeaderSize);
  if (!handle) return nullptr;
  auto* raw = static_cast<unsigned char*>(inData.utils->host_lock_handle(handle));
  if (!raw) {
    inData.utils->host_dispose_handle(handle);
    return nullptr;
  }
  std::memcpy(raw, &handle, sizeof handle);
  return raw + kHeaderSize;
}

void* allocateHostMemory(std::size_t size) noexcept {
  PF_InData* inData = currentInData();
  return inData ? allocateHostMemory(*inData, size) : nullptr;
}

void freeHostMemory(PF_InData& inData, void* block) noexcept {
  if (!block) return;
  PF_Handle handle = handleOfHostMemory(block);
  inData.utils->host_unlock_handle(handle);
  inData.utils->host_dispose_handle(handle);
}

void freeHostMemory(void* block) noexcept {
  if (PF_InData* inData = currentInData()) freeHostMemory(*inData, block);
}

void* allocateAlignedHostMemory(std::size_t size, std::size_t alignment) noexcept {
  const std::size_t extra = alignment + kHeaderSize - 1;
  if (size > std::numeric_limits<std::size_t>::max() - extra) return nullptr;
  void* raw = allocateHostMemory(size + extra);
  if (!raw) return nullptr;
  // Room for the raw address, then up to the next multiple of the alignment.
  auto address = reinterpret_cast<std::uintptr_t>(raw) + sizeof raw + alignment - 1;
  auto* aligned = reinterpret_cast<unsigned char*>(address & ~(alignment - 1));
  std::memcpy(aligned - sizeof raw, &raw, sizeof raw);
  return aligned;
}

void freeAlignedHostMemory(void* block) noexcept {
  if (!block) return;
  void* raw;
  std::memcpy(&raw, static_cast<unsigned char*>(block) - sizeof raw, sizeof raw);
  freeHostMemory(raw);
}

PF_Handle handleOfHostMemory(void* block) noexcept {
  PF_Handle handle;
  std::memcpy(&handle, static_cast<unsigned char*>(block) - kHeaderSize, sizeof handle);
  return handle;
}

void* hostMemoryOfHandle(PF_Handle handle) noexcept {
  if (!handle || !*handle) return nullptr;
  return static_cast<unsigned char*>(*handle) + kHeaderSize;
}

}  // namespace vellumtide
