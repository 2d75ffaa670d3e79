#include "cli/text/failure.h"

#include <cerrno>
#include <filesystem>
#include <new>

#include "cli/text/utf8_path.h"

namespace vellumtide::cli {

void failUsage(const std::string& message) {
  throw Failure(ExitStatus::Usage, message);
}

Failure failureOf(const std::exception& error) {
  if (const auto* failure = dynamic_cast<const Failure*>(&error)) return *failure;
  if (dynamic_cast<const std::bad_alloc*>(&error)) {
    return {ExitStatus::Failed, "there is not enough memory"};
  }
  if (const auto* file = dynamic_cast<const std::filesystem::filesystem_error*>(&error)) {
    // Only the question for the working folder names no path.
    const std::string path = file->path1().empty() ? "the working folder" : utf8(file->path1());
    return {ExitStatus::Failed, path + ": " + reasonOf(file->code())};
  }
  if (const auto* system = dynamic_cast<const std::system_error*>(&error)) {
    return {ExitStatus::Failed, "the system refuses: " + system->code().message()};
  }
  return {ExitStatus::Failed, error.what()};
}

std::string reasonOf(const std::error_code& error) {
  return error == std::errc::no_such_file_or_directory ? "there is no such file" : error.message();
}

std::string lastReason() {
  return std::generic_category().message(errno != 0 ? errno : EIO);
}

}  // namespace vellumtide::cli
