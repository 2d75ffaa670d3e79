// What others are told of a render job: frame by frame, and how it ended.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "cli/os/interruption.h"
#include "cli/os/stopwatch.h"
#include "cli/render/render_options.h"
#include "cli/render/render_plan.h"
#include "cli/render/render_progress.h"
#include "cli/render/render_records.h"

namespace vellumtide::cli {

// The end is told once: by its message on standard error, by the report, and by the last line of
// the progress. When a signal comes, each of the three is told by whichever thread is first.
class RenderNews {
 public:
  explicit RenderNews(const RenderJob& job) : job_(job) {}  // which outlives it

  // The frames are known.
  void start(const RenderPlan& plan);
  RenderRecords& records() { return *records_; }

  // The report is not to be written.
  void leaveReport() { reported_ = true; }

  // Throws Failure when the report cannot be written.
  void done();
  // Leaves the message to the caller, who ends with the failure. Does not throw.
  void failed(const Failure& failure);
  void interrupted(int signal);
  // interrupted() as steps of an Interruption.
  std::vector<Interruption::Step> lastSteps();

 private:
  struct End {
    std::string status;
    int exitStatus = 0;
    std::string failure;
  };
  RenderProgress* shown() const;  // null before start()
  End interruption(int signal) const;
  void sayInterruption(int signal);
  void report(const End& end);
  void endProgress(const End& end);

  const RenderJob& job_;
  Stopwatch watch_;
  bool isSequence_ = false;
  mutable std::mutex mutex_;  // of the two, while they are made
  std::unique_ptr<RenderProgress> progress_;
  std::unique_ptr<RenderRecords> records_;
  std::atomic<bool> said_{false}, reported_{false}, ended_{false};
};

}  // namespace vellumtide::cli
