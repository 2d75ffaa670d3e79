// Rendering files: from the options of the command to written pictures.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/image/image_file.h"
#include "cli/render/render_progress.h"
#include "cli/sequence/frame_sequence.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {

struct RenderJob {
  std::string program;
  std::vector<std::string> inputs;          // stills and patterns
  std::string output;                       // a pattern when there are frames
  std::vector<std::string> settings;        // NAME=VALUE
  std::vector<std::string> keys;            // NAME@FRAME=VALUE
  std::vector<std::string> animationFiles;  // JSON files of keys
  std::optional<int> depth;                 // 8, 16 or 32; none: the deepest of the inputs'
  std::optional<int> width, height;         // of a blank layer, when there are no inputs
  int downsample = 1;
  std::optional<PF_RationalScale> pixelAspect;  // instead of the first input's
  PF_RationalScale framesPerSecond{24, 1};
  std::vector<int> frames;  // empty: those of the first input with a number, else one picture
  Missing missing = Missing::Stop;
  bool keepGoing = false;     // after a frame that fails
  bool skipExisting = false;  // leave out frames whose output is complete
  ProgressStyle progress = ProgressStyle::Auto;
  std::string report;                         // JSON file to write, "" for none
  int threads = 1;                            // that read, and as many that write
  std::size_t memory = std::size_t{1} << 30;  // bytes of pictures between reading and writing
  bool dropAlpha = false;
  int compression = 4;  // see WriteOptions
  std::optional<SampleType> sampleType;
  std::string module;
  // Takes what is wrong with settings and keys that do not fit the program, which are then left
  // out; without it they end the job.
  std::function<void(const Failure&)> misfit;
};

// Renders everything; frames are read ahead and written behind on threads, the module is called
// from this one. Throws Failure when nothing can be rendered and, at the end, when a frame failed:
// that frame's own failure, or with keepGoing one that lists the frames. An interruption ends the
// process by its signal. Whatever the end, the report and the progress tell it.
void runRenderJob(const RenderJob& job);

// Has the report and the progress tell that the job failed before it began. Does not throw.
void tellFailure(const RenderJob& job, const Failure& failure);

}  // namespace vellumtide::cli
