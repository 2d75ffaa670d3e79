// What became of each frame of a render job.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <mutex>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/render/render_progress.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {

enum class FrameStatus { Waiting, Done, Skipped, Failed };

struct FrameRecord {
  std::optional<int> frame;  // none: the one picture of a job without a sequence
  std::string file;
  FrameStatus status = FrameStatus::Waiting;
  double readMs = 0, renderMs = 0, writeMs = 0;
  std::optional<Failure> failure{};
};

class RenderRecords {
 public:
  // `saysFailures`: a failed frame is said on standard error when it is shown.
  RenderRecords(std::vector<FrameRecord> frames, RenderProgress& progress, bool saysFailures);

  // The frame's final record; from any thread.
  void end(std::size_t index, FrameRecord record);
  // Reports what has ended since the last call to the user. From one thread alone, and not while
  // the module runs, because the headless host then has the process's output.
  void show();

  std::size_t count(FrameStatus status) const;
  std::size_t total() const;
  // The frames that have one of these, in order.
  std::vector<int> frames(std::initializer_list<FrameStatus> statuses) const;
  // The failure that ended first.
  std::optional<Failure> firstFailure() const;
  // [{frame, status, file, readMs, renderMs, writeMs, error}]
  nlohmann::ordered_json json() const;

 private:
  mutable std::mutex mutex_;
  std::vector<FrameRecord> frames_;
  std::vector<std::size_t> ended_;  // in the order of their ends
  std::size_t shown_ = 0;           // of those
  std::optional<Failure> firstFailure_;
  RenderProgress& progress_;
  bool saysFailures_;
};

}  // namespace vellumtide::cli
