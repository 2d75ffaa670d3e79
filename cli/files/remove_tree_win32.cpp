#include "cli/files/remove_tree.h"

namespace vellumtide::cli {

// No handler of a crash runs on Windows.
void removeTree(const char*) {}

}  // namespace vellumtide::cli
