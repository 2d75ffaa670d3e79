#include "tests/instances/module_memory.h"

#include <execinfo.h>
#include <link.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace vellumtide::instances {
namespace {

struct Range {
  std::uintptr_t begin = 0, end = 0;
  bool contains(const void* address) const {
    const auto at = reinterpret_cast<std::uintptr_t>(address);
    return at >= begin && at < end;
  }
};

// Where a library lies in memory.
struct Library {
  const char* name;
  Range range;
};

int findLibrary(dl_phdr_info* info, size_t, void* data) {
  auto& library = *static_cast<Library*>(data);
  if (!info->dlpi_name || !std::strstr(info->dlpi_name, library.name)) return 0;
  for (int i = 0; i < info->dlpi_phnum; ++i) {
    const auto& part = info->dlpi_phdr[i];
    if (part.p_type != PT_LOAD || !(part.p_flags & PF_X)) continue;
    library.range.begin = info->dlpi_addr + part.p_vaddr;
    library.range.end = library.range.begin + part.p_memsz;
  }
  return 1;
}

Range rangeOf(const char* name) {
  Library library{name, {}};
  dl_iterate_phdr(findLibrary, &library);
  return library.range;
}

thread_local int countdown = 0;
thread_local bool looking = false;
thread_local bool refused = false;
Range module, standardLibrary;

// The standard library allocates for whoever called it.
__attribute__((noinline)) bool isModulesCall() {
  constexpr int kDepth = 12;
  void* frames[kDepth];
  const int depth = backtrace(frames, kDepth);
  int caller = 3;  // behind this function, mayAllocate and operator new
  while (caller < depth && standardLibrary.contains(frames[caller]))
    ++caller;
  return caller < depth && module.contains(frames[caller]);
}

__attribute__((noinline)) bool mayAllocate() {
  if (countdown == 0 || looking) return true;
  looking = true;
  const bool last = isModulesCall() && --countdown == 0;
  looking = false;
  refused = refused || last;
  return !last;
}

}  // namespace

void refuseModuleMemory(int n) {
  looking = true;
  void* frame;
  backtrace(&frame, 1);  // loads what it needs
  module = rangeOf("Vellumtide.so");
  standardLibrary = rangeOf("libstdc++");
  refused = false;
  looking = false;
  countdown = n;
}

bool moduleMemoryWasRefused() {
  return refused;
}

}  // namespace vellumtide::instances

void* operator new(std::size_t size) {
  if (vellumtide::instances::mayAllocate()) {
    if (void* block = std::malloc(size ? size : 1)) return block;
  }
  throw std::bad_alloc();
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}
