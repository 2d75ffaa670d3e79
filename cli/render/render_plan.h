// Which frames a render job has, and which files belong to each.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "cli/render/render_options.h"
#include "cli/session/layer_pictures.h"

namespace vellumtide::cli {

struct FrameTask {
  std::optional<int> number;  // none: the one picture of a job without a sequence
  std::vector<LayerSource> inputs;
  std::filesystem::path output;
};

class RenderPlan {
 public:
  // Throws Failure when the names do not fit together: an output without a place for the number of
  // several frames, no frames at all.
  explicit RenderPlan(const FrameOptions& options);

  bool isSequence() const { return isSequence_; }
  std::size_t size() const { return isSequence_ ? frames_.size() : 1; }
  // From several threads.
  FrameTask task(std::size_t index) const;

 private:
  std::filesystem::path output_;
  std::vector<InputFrames> inputs_;
  std::vector<std::filesystem::path> models_;  // for each input a file that has its shape
  std::vector<int> frames_;
  bool isSequence_ = false;
};

}  // namespace vellumtide::cli
