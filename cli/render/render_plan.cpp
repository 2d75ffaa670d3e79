#include "cli/render/render_plan.h"

#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

std::vector<int> framesOfInputs(const std::vector<fs::path>& patterns,
                                const std::vector<InputFrames>& inputs) {
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    if (inputs[i].isStill() || !isNumbered(patterns[i])) continue;
    std::vector<int> frames = framesOnDisk(patterns[i]);
    if (frames.empty()) {
      throw Failure(ExitStatus::Image, utf8(patterns[i]) + ": no frame of this sequence is there");
    }
    return frames;
  }
  return {};
}

}  // namespace

RenderPlan::RenderPlan(const FrameOptions& options)
    : output_(pathOf(options.output)), frames_(options.frames) {
  std::vector<fs::path> patterns;
  for (const std::string& input : options.inputs) {
    patterns.push_back(pathOf(input));
    inputs_.emplace_back(patterns.back(), options.missing);
  }
  if (frames_.empty()) frames_ = framesOfInputs(patterns, inputs_);
  isSequence_ = !frames_.empty();
  if (!isSequence_ && isNumbered(output_)) {
    failUsage("-o " + options.output +
              ": say which frames with --frames, or give a numbered input");
  }
  if (frames_.size() > 1 && !isNumbered(output_)) {
    failUsage("-o " + options.output +
              ": the name needs a place for the frame number, such as ####");
  }
  for (std::size_t i = 0; i < inputs_.size(); ++i) {
    // Black stands in only where some frame is on disk; the others of its sequence look like it.
    const std::vector<int> there = options.missing == Missing::Black && !inputs_[i].isStill()
                                       ? framesOnDisk(patterns[i])
                                       : std::vector<int>{};
    models_.push_back(there.empty() ? patterns[i] : frameName(patterns[i], there.front()));
  }
}

FrameTask RenderPlan::task(std::size_t index) const {
  FrameTask task;
  task.output = isSequence_ ? frameName(output_, frames_[index]) : output_;
  if (isSequence_) task.number = frames_[index];
  for (std::size_t i = 0; i < inputs_.size(); ++i) {
    const std::optional<fs::path> file = inputs_[i].file(isSequence_ ? frames_[index] : 0);
    task.inputs.push_back({file.value_or(models_[i]), !file});
  }
  return task;
}

}  // namespace vellumtide::cli
