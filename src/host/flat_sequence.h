// The form in which projects save an instance's sequence data: little-endian bytes
//   0  4  format version, 1
//   4  4  flags, bit 0 = fresh
//   8  n  path, then a zero byte
// Version 0, an older layout, has the path at offset 4 and no flags; it is still read.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vellumtide {

struct FlatSequence {
  std::string path;
  bool hasProgram = false;
  bool freshFlag = true;
};

// Reads no byte behind `size`; a path that lacks its zero byte ends there. Unknown versions and
// data too short for its own layout give what a new instance has.
FlatSequence readFlatSequence(const void* bytes, std::size_t size);

// Exactly path.size() + 9 bytes.
std::string writeFlatSequence(std::string_view path, bool freshFlag);

}  // namespace vellumtide
