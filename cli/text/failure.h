// How a command ends: the documented exit statuses and the exception that carries one.
#pragma once

#include <stdexcept>
#include <string>
#include <system_error>

namespace vellumtide::cli {

enum class ExitStatus {
  Done = 0,
  Failed = 1,    // a frame failed, or anything that has no number of its own
  Usage = 2,     // wrong arguments
  Program = 3,   // the program file cannot be loaded or its shaders do not build
  Image = 4,     // an image cannot be read or written
  NoDevice = 5,  // no usable GL device
};

// Ends the command with a message for the user ("what and where", without the program's name).
class Failure : public std::runtime_error {
 public:
  Failure(ExitStatus endStatus, const std::string& message)
      : std::runtime_error(message), status(endStatus) {}

  ExitStatus status;
};

// Ends the command because of its arguments.
[[noreturn]] void failUsage(const std::string& message);

// The failure that stands for any exception: itself, or what the system said, about which path,
// with ExitStatus::Failed.
Failure failureOf(const std::exception& error);

// Why a file cannot be had, in the system's words; "there is no such file" when that is all.
std::string reasonOf(const std::error_code& error);

// Why the C library's last call failed, in the system's words. Streams leave no reason behind when
// nothing failed below them: set errno to 0 before.
std::string lastReason();

}  // namespace vellumtide::cli
