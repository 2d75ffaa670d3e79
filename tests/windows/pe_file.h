// What a 64-bit Windows module says about itself, read from the bytes of its file.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vellumtide {

struct PeResource {
  std::string type;  // a name, or "#" and the number of a standard type
  uint32_t id = 0;
  uint32_t language = 0;
  std::string bytes;
};

struct PeFile {
  uint16_t machine = 0;        // 0x8664 for 64 bits
  uint16_t optionalMagic = 0;  // 0x20B for PE32+
  uint32_t timestamp = 0;
  std::vector<std::string> sections;
  std::vector<std::string> exports;
  std::vector<std::string> importedLibraries;
  std::vector<PeResource> resources;
};

// Throws std::out_of_range where a structure of the file leads outside of it.
PeFile readPeFile(std::string_view bytes);

}  // namespace vellumtide
