#include "cli/files/output_target.h"

#include <cstdio>
#include <fstream>
#include <vector>

#include "cli/files/file_identity.h"
#include "cli/files/output_access.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPart = std::size_t{1} << 16;  // bytes sent at a time

// Where the links end, whether or not something is there.
fs::path behindLinks(fs::path path) {
  std::error_code failed;
  for (int links = 0; links < kMostLinks; ++links) {
    if (!fs::is_symlink(fs::symlink_status(path, failed))) return path;
    const fs::path next = fs::read_symlink(path, failed);
    if (failed) throw WriteRefusal(failed.message());
    path = path.parent_path() / next;
  }
  throw WriteRefusal("its links lead in a circle");
}

const char* refusedKind(fs::file_type type) {
  switch (type) {
    case fs::file_type::directory:
      return "it is a folder";
    case fs::file_type::block:
      return "it is a block device";
    case fs::file_type::socket:
      return "it is a socket";
    default:
      return nullptr;
  }
}

void checkFolder(const fs::path& path) {
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  if (!addingForbidden(folder / "")) return;  // with the separator, what is no folder fails
  std::error_code failed;
  const fs::file_status status = fs::status(folder, failed);
  if (status.type() == fs::file_type::not_found)
    throw WriteRefusal("there is no folder " + utf8(folder));
  if (status.type() == fs::file_type::none)
    throw WriteRefusal(utf8(folder) + ": " + failed.message());
  if (!fs::is_directory(status)) throw WriteRefusal("there is no folder " + utf8(folder));
  if (const std::error_code reason = addingForbidden(folder))
    throw WriteRefusal("the folder " + utf8(folder) + " takes no new file: " + reason.message());
}

}  // namespace

bool isStandardOutput(const fs::path& name) {
  return name == "-";
}

OutputTarget outputTarget(const fs::path& name) {
  if (isStandardOutput(name)) return {OutputTarget::Kind::Output, name};
  std::error_code failed;
  fs::file_status status = fs::symlink_status(name, failed);
  const bool isLink = fs::is_symlink(status);
  if (isLink) status = fs::status(name, failed);
  if (status.type() == fs::file_type::none) {
    throw WriteRefusal(failed == std::errc::too_many_symbolic_link_levels
                           ? "its links lead in a circle"
                           : failed.message());
  }
  if (const char* const refused = refusedKind(status.type())) throw WriteRefusal(refused);
  if (fs::exists(status)) {
    // As it is with its links: what they say of a pipe in /proc is no name.
    if (const auto own = ownStream(name)) return {*own, name};
    if (const std::error_code reason = writingForbidden(name)) throw WriteRefusal(reason.message());
    if (!fs::is_regular_file(status)) return {OutputTarget::Kind::Stream, name};
  }
  fs::path path = isLink ? behindLinks(name) : name;
  if (!path.has_filename()) throw WriteRefusal("it is the name of a folder");
  checkFolder(path);
  // What is open but removed still has a link in /proc.
  if (isLink && fs::exists(status) && !fs::exists(path, failed))
    throw WriteRefusal("the file has been removed");
  return {OutputTarget::Kind::File, std::move(path), fs::exists(status)};
}

void sendFile(const fs::path& file, const OutputTarget& target) {
  try {
    std::fflush(target.kind == OutputTarget::Kind::Error ? stderr : stdout);
    OpenStream stream(target);
    std::ifstream source(file, std::ios::binary);
    std::vector<char> part(kPart);
    while (source.read(part.data(), kPart) || source.gcount() > 0)
      stream.write(part.data(), static_cast<std::size_t>(source.gcount()));
  } catch (const fs::filesystem_error& error) {
    throw WriteRefusal(error.code().message());
  }
}

}  // namespace vellumtide::cli
