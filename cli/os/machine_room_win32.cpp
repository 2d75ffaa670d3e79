#include "cli/os/machine_room.h"

namespace vellumtide::cli {

// Windows limits neither for a process by itself.
void requireMachineRoom() {}

}  // namespace vellumtide::cli
