// Colour in messages, where it helps a person and nowhere else.
#pragma once

#include <string>
#include <string_view>

#include "cli/text/terminal.h"

namespace vellumtide::cli {

enum class Color { Bold, Red, Green, Yellow, Cyan };  // all of them bold

// True when the stream is a terminal that shows colours and the user has nothing against them
// (the environment variable NO_COLOR is not set, or empty).
bool hasColor(Stream stream);

// `text` for that stream: between the codes that colour it, or as it is.
std::string painted(std::string_view text, Color color, Stream stream);

}  // namespace vellumtide::cli
