#include "headless/process_memory.h"

namespace vellumtide::headless {

// The system's heap does so by itself.
void returnLargeBlocksAtOnce() {}

}  // namespace vellumtide::headless
