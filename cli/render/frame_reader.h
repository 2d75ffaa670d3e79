// Reads what one frame of a render job needs, on whatever thread.
#pragma once

#include <optional>

#include "cli/render/render_plan.h"
#include "cli/sequence/picture_budget.h"
#include "cli/session/layer_pictures.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {

struct ReadFrame {
  FrameTask task;
  bool isComplete = false;           // the output exists already and need not be rendered
  std::optional<Failure> failure{};  // nothing else then counts
  LayerPictures input{};
  double milliseconds = 0;
  PictureBudget::Share share{};
};

// Never throws. The share becomes as large as the frame's pictures, the rendered one included.
ReadFrame readFrame(const PictureOptions& asked, const RenderPlan& plan, std::size_t index,
                    PictureBudget::Share share);

}  // namespace vellumtide::cli
