// Numbered files: the frames of a sequence and the file name of each.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace vellumtide::cli {

// "1-100", "1-99x2" (every second), "3,5,10-20". Throws Failure (ExitStatus::Usage).
std::vector<int> parseFrames(std::string_view text);

// Whether the name has a place for a frame number: "%d", "%04d" or a run of '#', in the file's own
// name.
bool isNumbered(const std::filesystem::path& pattern);

// The name of one frame; a name without a place stays as it is.
std::filesystem::path frameName(const std::filesystem::path& pattern, int frame);

}  // namespace vellumtide::cli
