// The root of the system's long-lived polymorphic objects, which live in host memory.
#pragma once

#include <cstddef>
#include <new>

#include "aeapi/constants.h"
#include "core/host_memory.h"

namespace vellumtide {

// `new` of a derived class yields null when no command is running or the host gives no memory.
class aeBase {
 public:
  virtual ~aeBase() = default;

  static void* operator new(std::size_t size) noexcept { return allocateHostMemory(size); }
  static void operator delete(void* block) noexcept { freeHostMemory(block); }
  static void* operator new(std::size_t size, std::align_val_t alignment) noexcept {
    return allocateAlignedHostMemory(size, static_cast<std::size_t>(alignment));
  }
  static void operator delete(void* block, std::align_val_t) noexcept {
    freeAlignedHostMemory(block);
  }
  static void* operator new(std::size_t, void* place) noexcept { return place; }
  static void operator delete(void*, void*) noexcept {}

 protected:
  aeBase() = default;
  aeBase(const aeBase&) = default;
  aeBase& operator=(const aeBase&) = default;
};

// `new T(args...)`, or the host's out-of-memory error thrown.
template <class T, class... Args>
T* newOrThrow(Args&&... args) {
  T* object = new T(static_cast<Args&&>(args)...);
  if (!object) throw PF_Err{PF_Err_OUT_OF_MEMORY};
  return object;
}

}  // namespace vellumtide
