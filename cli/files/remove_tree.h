#pragma once

namespace vellumtide::cli {

// Removes a folder with all it holds, as far as that goes. Touches neither heap nor locks, so that
// the handler of a crash may call it.
void removeTree(const char* path);

}  // namespace vellumtide::cli
