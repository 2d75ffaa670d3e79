#define PSAPI_VERSION 2  // the call is in kernel32
#include <windows.h>
// After windows.h, which it needs.
#include <psapi.h>

#include "tests/support/resident_memory.h"

namespace vellumtide::end_to_end {

long residentBytes() {
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof memory;
  if (!GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory)) return 0;
  return static_cast<long>(memory.WorkingSetSize);
}

}  // namespace vellumtide::end_to_end
