// What the two ends of the image files share: the formats, their limits, and how a failure reads.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "cli/image/image_file.h"

namespace vellumtide::cli {

enum class StraightAlpha { Never, OnRequest, Always };

// What a format can hold, and the sample type it gets for each depth.
struct ImageFormat {
  const char* name;
  std::vector<const char*> extensions;
  std::vector<SampleType> types;
  SampleType for8, for16, for32;
  StraightAlpha straightAlpha;
  std::vector<std::string_view> starts;  // one of them begins each file
};

// The formats that this build's image library writes.
std::span<const ImageFormat> writtenFormats();

bool isPngFormat(const ImageFormat& format);

// The format that the path's extension stands for, PNG for "-"; a Failure when there is none.
const ImageFormat& formatOf(const std::filesystem::path& path);

[[noreturn]] void failImage(const std::filesystem::path& path, const std::string& reason);

// A Failure when there is no file, or when it is a folder, a pipe or a device. Opens nothing.
void checkReadable(const std::filesystem::path& path);

// A Failure unless the picture has pixels and stays within the limits.
void checkSize(const std::filesystem::path& path, int width, int height, int channels);

}  // namespace vellumtide::cli
