// Lists of frame numbers as people write them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vellumtide::cli {

// Parts between commas, blanks around them allowed: "7", "1-240", "1-240x2" or "1-240:2" (every
// second), "10-1" (backwards), "-10--5". A frame named twice keeps its first place. Throws Failure
// (ExitStatus::Usage) that names the text and what was expected; a million frames are the most.
std::vector<int> parseFrames(std::string_view text);

// A short list that parseFrames reads back as the same frames: "1-5,9,12-20x2".
std::string frameListText(const std::vector<int>& frames);

}  // namespace vellumtide::cli
