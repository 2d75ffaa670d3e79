#pragma once

#include <functional>

namespace vellumtide::end_to_end {

// Runs `body` to its end on a thread whose stack has 1 MiB.
void runOnSmallStack(const std::function<void()>& body);

}  // namespace vellumtide::end_to_end
