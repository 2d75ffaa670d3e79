// Numbered files: the name of each frame's file, and which of them there are.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "cli/sequence/frame_list.h"

namespace vellumtide::cli {

// Whether the name has a place for a frame number: "%d", "%04d", "####" or "@@@@" (a digit for each
// '#' or '@'), in the file's own name. The first place counts.
bool isNumbered(const std::filesystem::path& pattern);

// The name of one frame; a name without a place stays as it is. Negative numbers are written as
// printf does, the sign being one of the digits.
std::filesystem::path frameName(const std::filesystem::path& pattern, int frame);

// The frames whose files are in the folder, in rising order. Other spellings of a number
// ("in.7.png" for "in.####.png") do not count. Empty for a name without a place and a folder that
// cannot be read.
std::vector<int> framesOnDisk(const std::filesystem::path& pattern);

// The names of files there whose number is one, but spelled otherwise than the pattern does.
std::vector<std::filesystem::path> otherSpellings(const std::filesystem::path& pattern);

// What stands in for an input frame that is not there.
enum class Missing {
  Stop,   // nothing: the frame fails
  Hold,   // the nearest earlier frame on disk; before the first, the first
  Black,  // transparent black
};

// The files that one input reads, frame by frame. A name that is that of a file as it stands is a
// still, even if it has a place for a number. May be copied, and asked from several threads.
class InputFrames {
 public:
  InputFrames(const std::filesystem::path& pattern, Missing missing);

  bool isStill() const { return isStill_; }

  // The file to read; nothing where black stands in. A file that is absent and has no stand-in is
  // named all the same, so that reading it tells what is wrong; so is every file of an input none
  // of whose frames is on disk, because then the name is mistaken. The folder is listed once, when
  // the first file is found absent.
  std::optional<std::filesystem::path> file(int frame) const;

 private:
  struct Listing;
  const std::vector<int>& listing() const;

  std::filesystem::path pattern_;
  Missing missing_;
  bool isStill_;
  std::shared_ptr<Listing> listing_;
};

}  // namespace vellumtide::cli
