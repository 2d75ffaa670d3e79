// What tells one state of a file from another without reading it.
#pragma once

#include <cstdint>
#include <filesystem>

namespace vellumtide::cli {

struct FileStamp {
  bool exists = false;
  std::uint64_t size = 0;
  std::int64_t modified = 0;  // in the finest units that the system has
  std::uint64_t id = 0;       // of the file behind the name

  bool operator==(const FileStamp&) const = default;
};

// Of a file that cannot be looked at, the stamp of one that is not there.
FileStamp stampOf(const std::filesystem::path& path);

}  // namespace vellumtide::cli
