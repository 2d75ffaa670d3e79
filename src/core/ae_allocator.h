// Standard allocator over the host's memory, for containers that belong to host-memory objects.
#pragma once

#include <cstddef>
#include <limits>

#include "aeapi/constants.h"
#include "core/host_memory.h"

namespace vellumtide {

// Throws PF_Err_OUT_OF_MEMORY when the host gives no memory or no command is running.
template <class T>
class aeAllocator {
 public:
  using value_type = T;

  aeAllocator() = default;
  template <class U>
  aeAllocator(const aeAllocator<U>&) noexcept {}

  T* allocate(std::size_t count) {
    static_assert(alignof(T) <= 8, "blocks in host memory are aligned to 8 bytes");
    void* block = nullptr;
    if (count <= std::numeric_limits<std::size_t>::max() / sizeof(T)) {
      block = allocateHostMemory(count * sizeof(T));
    }
    if (!block) throw PF_Err{PF_Err_OUT_OF_MEMORY};
    return static_cast<T*>(block);
  }
  void deallocate(T* block, std::size_t) noexcept { freeHostMemory(block); }

  template <class U>
  bool operator==(const aeAllocator<U>&) const noexcept {
    return true;
  }
};

}  // namespace vellumtide
