// Which file a name means, however it is spelled and through whatever links.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace vellumtide::cli {

inline constexpr int kMostLinks = 40;  // that lead from one to the next before a file

// Of a file that exists, its volume and number there; of one that does not, its folder's and the
// name that it would have.
struct FileIdentity {
  std::uint64_t volume = 0, number = 0;
  std::filesystem::path name;

  auto operator<=>(const FileIdentity&) const = default;
};

// Nothing for devices, which many may share, and for names that lead nowhere. Opens nothing that
// is no regular file.
std::optional<FileIdentity> identityOf(const std::filesystem::path& path);

}  // namespace vellumtide::cli
