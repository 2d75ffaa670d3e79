// What the program's output streams lead to.
#pragma once

namespace vellumtide::cli {

enum class Stream { Out, Error };

// True when a person looks at the stream.
bool isTerminal(Stream stream);

// True when the stream is a terminal that shows colours; on Windows it is told to.
bool isColorTerminal(Stream stream);

}  // namespace vellumtide::cli
