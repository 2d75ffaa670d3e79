#pragma once

namespace vellumtide::cli {

// Throws Failure (ExitStatus::Failed) when the machine leaves this process too few files to open or
// too little memory for a GL driver, which says at most that there is no device.
void requireMachineRoom();

}  // namespace vellumtide::cli
