#include "headless/platform.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace vellumtide::headless {

void returnLargeBlocksAtOnce() {
#ifdef __GLIBC__
  // A fixed threshold; left alone it rises to 32 MiB with the blocks that are freed.
  mallopt(M_MMAP_THRESHOLD, 256 * 1024);
#endif
}

const char* operatingSystemName() {
  return "Linux";
}

}  // namespace vellumtide::headless
