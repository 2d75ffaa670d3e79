// What the program says on its two streams.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace vellumtide::cli {

// "vellumtide: message" and a line end on standard error. Lines of the message that a scheduler
// would take for one of its control lines are moved in by a blank.
void say(const std::string& message);

// A line on standard error as it is, for news that are no error.
void note(const std::string& line);

// Nobody reads standard output any more.
struct ReaderGone : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Writes to standard output, byte for byte, and flushes; throws ReaderGone, or Failure when that
// fails for another reason.
void writeOut(std::string_view text);

// The text on one line: control characters become blanks.
std::string onOneLine(std::string_view text);

}  // namespace vellumtide::cli
