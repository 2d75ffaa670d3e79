#include <unistd.h>

#include <fstream>

#include "tests/support/resident_memory.h"

namespace vellumtide::end_to_end {

long residentBytes() {
  long size = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

}  // namespace vellumtide::end_to_end
