// The general heap as the module sees it: its operator new can fail at any one allocation.
#pragma once

namespace vellumtide::instances {

// The n-th allocation of the module on this thread from now on fails, 0 for none. Allocations of
// the host that the module calls, and of the driver, do not count.
void refuseModuleMemory(int n);

// Whether that allocation has come.
bool moduleMemoryWasRefused();

}  // namespace vellumtide::instances
