// Blocks of memory inside the host's handles. A block of n bytes is a handle of n + 8 bytes, locked
// for as long as it lives; its first 8 bytes keep the handle and the rest is handed out.
#pragma once

#include <cstddef>

#include "aeapi/effect_data.h"

namespace vellumtide {

// n bytes (aligned to 8) from the given host, or from the host of the current command. Null when
// the host returns no handle or no command is running.
void* allocateHostMemory(PF_InData& inData, std::size_t size) noexcept;
void* allocateHostMemory(std::size_t size) noexcept;

// Unlocks and disposes the block's handle. Null, or outside a command: does nothing.
void freeHostMemory(PF_InData& inData, void* block) noexcept;
void freeHostMemory(void* block) noexcept;

// As above for alignments over 8 (a power of two): over-allocates by alignment + 7 and keeps the
// raw block's address just before the aligned one.
void* allocateAlignedHostMemory(std::size_t size, std::size_t alignment) noexcept;
void freeAlignedHostMemory(void* block) noexcept;

// The handle that holds a block of allocateHostMemory, to be given to the host.
PF_Handle handleOfHostMemory(void* block) noexcept;

// The block inside a handle that handleOfHostMemory gave to the host; null for a null handle or an
// unlocked block without memory.
void* hostMemoryOfHandle(PF_Handle handle) noexcept;

}  // namespace vellumtide
