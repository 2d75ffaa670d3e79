// The progress of a render job, for people and for schedulers.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "cli/render/render_options.h"
#include "cli/text/progress.h"

namespace vellumtide::cli {

// When standard output cannot be written the lines end, not the job.
class RenderProgress {
 public:
  // `total` frames; none of a sequence for a single picture.
  RenderProgress(ProgressStyle style, std::size_t total, bool isSequence);

  struct Frame {
    std::optional<int> number;
    std::string file, status, error;
    bool worked = true;  // it took time
  };
  // One more frame has ended: one line, flushed.
  void frame(const Frame& frame);
  void breakLine() { lines_.breakLine(); }
  // The last line. `failure` is the message the program ends with, "" when all is well.
  void end(const std::string& status, int exitStatus, const std::string& failure);

 private:
  void put(const std::string& text);

  ProgressStyle style_;
  bool heard_ = true;
  std::size_t total_, done_ = 0;
  Progress lines_;
};

}  // namespace vellumtide::cli
