#include "headless/platform.h"

namespace vellumtide::headless {

// The system's heap does so by itself.
void returnLargeBlocksAtOnce() {}

const char* operatingSystemName() {
  return "Windows";
}

}  // namespace vellumtide::headless
