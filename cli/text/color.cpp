#include "cli/text/color.h"

#include <cstdlib>

namespace vellumtide::cli {

bool hasColor(Stream stream) {
  const char* refused = std::getenv("NO_COLOR");
  return (refused == nullptr || *refused == '\0') && isColorTerminal(stream);
}

std::string painted(std::string_view text, Color color, Stream stream) {
  if (!hasColor(stream)) return std::string(text);
  constexpr const char* kCodes[] = {"\033[1m", "\033[1;31m", "\033[1;32m", "\033[1;33m",
                                    "\033[1;36m"};
  return kCodes[static_cast<int>(color)] + std::string(text) + "\033[0m";
}

}  // namespace vellumtide::cli
