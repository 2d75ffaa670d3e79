#include "cli/text/messages.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include "cli/text/color.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {
namespace {

// Open Job Description takes every line of a task's output that begins like this for its own.
constexpr std::string_view kControlLine = "openjd_";

std::string withoutControlLines(std::string text) {
  const std::string start = "\n" + std::string(kControlLine);
  for (std::size_t at = text.find(start); at != std::string::npos; at = text.find(start, at + 1)) {
    text.insert(at + 1, " ");
  }
  return text;
}

}  // namespace

void say(const std::string& message) {
  const std::string name = painted("vellumtide:", Color::Red, Stream::Error);
  std::fprintf(stderr, "%s %s\n", name.c_str(), withoutControlLines(message).c_str());
  std::fflush(stderr);
}

void note(const std::string& line) {
  std::fprintf(stderr, "%s\n", withoutControlLines(line).c_str());
  std::fflush(stderr);
}

void writeOut(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0) {
    const int reason = errno;
    if (reason == EPIPE) throw ReaderGone("nobody reads standard output");
    throw Failure(ExitStatus::Failed,
                  "standard output cannot be written: " + std::generic_category().message(reason));
  }
}

std::string onOneLine(std::string_view text) {
  std::string result(text);
  std::replace_if(
      result.begin(), result.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
  return result;
}

}  // namespace vellumtide::cli
