#include "cli/files/file_guard.h"

#include "cli/files/output_target.h"
#include "cli/text/failure.h"
#include "cli/text/terminal.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

std::optional<FileIdentity> identityOfOutput(const std::filesystem::path& file) {
  if (!isStandardOutput(file)) return identityOf(file);
  const auto behind = identityOf("/dev/stdout");
  return behind ? behind : FileIdentity{0, 0, file};
}

}  // namespace

void FileGuard::reads(const char* role, const std::filesystem::path& file) {
  if (auto identity = identityOf(file)) uses_.try_emplace(*identity, Use{role, file, false});
}

void FileGuard::writes(const char* option, const std::filesystem::path& file) {
  const std::optional<FileIdentity> identity = identityOfOutput(file);
  if (!identity) return;
  const auto [place, isNew] = uses_.try_emplace(*identity, Use{option, file, true});
  if (isNew) return;
  const Use& other = place->second;
  const std::string both = std::string(option) + " " + utf8(file) + ": ";
  const std::string name = std::string(other.role) + " " + utf8(other.file);
  throw Failure(ExitStatus::Usage, both + (other.isWritten ? "is the same file as " + name
                                                           : "would overwrite " + name));
}

void requireNoTerminal(const char* option, const std::filesystem::path& file) {
  if (!isStandardOutput(file) || !isTerminal(Stream::Out)) return;
  throw Failure(ExitStatus::Usage,
                std::string(option) + " -: standard output is a terminal, which shows no pictures");
}

}  // namespace vellumtide::cli
