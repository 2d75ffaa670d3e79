// Rendering files: from the options of the command to written pictures.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/image_file.h"

namespace vellumtide::cli {

struct RenderJob {
  std::string program;
  std::vector<std::string> inputs;    // patterns when there are frames
  std::string output;                 // likewise
  std::vector<std::string> settings;  // NAME=VALUE
  std::optional<int> depth;           // 8, 16 or 32; none: the deepest of the inputs'
  std::optional<int> width, height;   // of a blank layer, when there are no inputs
  int downsample = 1;
  std::optional<PF_RationalScale> pixelAspect;  // instead of the first input's
  PF_RationalScale framesPerSecond{24, 1};
  std::vector<int> frames;  // empty: one picture at time 0
  bool stopOnError = false;
  bool showProgress = false;
  bool dropAlpha = false;
  std::optional<SampleType> sampleType;
  std::string module;
};

// Throws Failure when nothing can be rendered, or for a single picture that fails. Of a sequence
// the frames that fail are reported to standard error; then the Failure (ExitStatus::Failed) at
// the end says how many.
void runRenderJob(const RenderJob& job);

}  // namespace vellumtide::cli
