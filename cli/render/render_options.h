// What a render job is asked for, in parts: each stage takes the parts that it uses.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/image/image_format.h"
#include "cli/sequence/frame_sequence.h"
#include "cli/text/failure.h"
#include "cli/text/number_text.h"

namespace vellumtide::cli {

enum class ProgressStyle {
  Auto,    // a bar for a person who looks, else plain lines; nothing for a single picture
  Bar,     // one line on standard error, rewritten
  Plain,   // a line a frame on standard error
  Json,    // an object a line on standard output
  OpenJd,  // lines for Open Job Description on standard output
  None,
};

// What is rendered with.
struct ProgramOptions {
  std::string program, module;
  std::vector<std::string> settings;        // NAME=VALUE
  std::vector<std::string> keys;            // NAME@FRAME=VALUE
  std::vector<std::string> animationFiles;  // JSON files of keys
  PF_RationalScale framesPerSecond{24, 1};
  // Takes what is wrong with settings and keys that do not fit the program, which are then left
  // out; without it they end the job.
  std::function<void(const Failure&)> misfit;
};

// Which frames there are, and the files of each.
struct FrameOptions {
  std::vector<std::string> inputs;  // stills and patterns
  std::string output;               // a pattern when there are frames
  std::vector<int> frames;  // empty: those of the first input with a number, else one picture
  Missing missing = Missing::Stop;
};

// How a frame's pictures are read, rendered and written.
struct PictureOptions {
  std::optional<int> depth;          // 8, 16 or 32; none: the deepest of the inputs'
  std::optional<int> width, height;  // of a blank layer, when there are no inputs
  int downsample = 1;
  std::optional<PF_RationalScale> pixelAspect;  // instead of the first input's
  bool skipExisting = false;                    // leave out frames whose output is complete
  bool dropAlpha = false;
  int compression = 4;  // see WriteOptions
  std::optional<SampleType> sampleType;
};

// How the frames are worked on.
struct WorkOptions {
  bool keepGoing = false;                     // after a frame that fails
  int threads = 1;                            // that read, and as many that write
  std::size_t memory = std::size_t{1} << 30;  // bytes of pictures between reading and writing
};

// How others are told.
struct NewsOptions {
  ProgressStyle progress = ProgressStyle::Auto;
  std::string report;  // JSON file to write, "" for none
};

struct RenderJob : ProgramOptions, FrameOptions, PictureOptions, WorkOptions, NewsOptions {};

}  // namespace vellumtide::cli
