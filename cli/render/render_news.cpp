#include "cli/render/render_news.h"

#include <utility>

#include "cli/os/signals.h"
#include "cli/render/render_report.h"
#include "cli/sequence/frame_list.h"
#include "cli/text/messages.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

std::vector<FrameRecord> recordsOf(const RenderPlan& plan) {
  std::vector<FrameRecord> records(plan.size());
  for (std::size_t i = 0; i < records.size(); ++i) {
    const FrameTask task = plan.task(i);
    records[i].frame = task.number;
    records[i].file = utf8(task.output);
  }
  return records;
}

}  // namespace

void RenderNews::start(const RenderPlan& plan) {
  auto progress = std::make_unique<RenderProgress>(job_.progress, plan.size(), plan.isSequence());
  auto records = std::make_unique<RenderRecords>(recordsOf(plan), *progress,
                                                 job_.keepGoing && plan.isSequence());
  const std::lock_guard lock(mutex_);
  isSequence_ = plan.isSequence();
  progress_ = std::move(progress);
  records_ = std::move(records);
}

void RenderNews::done() {
  try {
    report({"done", 0, ""});
  } catch (const Failure& failure) {
    endProgress({"failed", static_cast<int>(failure.status), failure.what()});
    throw;
  }
  endProgress({"done", 0, ""});
}

void RenderNews::failed(const Failure& failure) {
  const End end{"failed", static_cast<int>(failure.status), failure.what()};
  try {
    report(end);
  } catch (const Failure& unreported) {
    if (end.failure != unreported.what()) say(unreported.what());
  }
  endProgress(end);
}

void RenderNews::interrupted(int signal) {
  for (const Interruption::Step& step : lastSteps())
    step(signal);
}

std::vector<Interruption::Step> RenderNews::lastSteps() {
  const auto tellReport = [this](int signal) {
    try {
      report(interruption(signal));
    } catch (const Failure& unreported) {
      say(unreported.what());
    }
  };
  return {[this](int signal) { sayInterruption(signal); }, tellReport,
          [this](int signal) { endProgress(interruption(signal)); }};
}

RenderProgress* RenderNews::shown() const {
  const std::lock_guard lock(mutex_);
  return progress_.get();
}

RenderNews::End RenderNews::interruption(int signal) const {
  const std::lock_guard lock(mutex_);
  const End end{"interrupted", 128 + signal, std::string("interrupted by ") + signalName(signal)};
  const auto with = [&](const std::string& more) {
    return End{end.status, end.exitStatus, end.failure + more};
  };
  if (!records_) return with(": nothing was written");
  if (!isSequence_) {
    const bool isDone = records_->count(FrameStatus::Done) != 0;
    return with(isDone ? ", but the picture is complete" : ": nothing was written");
  }
  const std::vector<int> left = records_->frames({FrameStatus::Waiting, FrameStatus::Failed});
  const std::size_t complete = records_->total() - left.size();
  const std::string counted = ": " + std::to_string(complete) + " of " +
                              std::to_string(records_->total()) + " frames are complete";
  if (left.empty()) return with(counted);
  return with(counted + "\nTo go on, run the same command with --skip-existing, or with --frames " +
              frameListText(left));
}

void RenderNews::sayInterruption(int signal) {
  if (said_.exchange(true)) return;
  if (RenderProgress* progress = shown()) progress->breakLine();
  say(interruption(signal).failure);
}

void RenderNews::report(const End& end) {
  if (job_.report.empty() || reported_.exchange(true)) return;
  RenderProgress silent(ProgressStyle::None, 0, false);
  const RenderRecords none({}, silent, false);
  const bool isStarted = shown() != nullptr;
  if (!isStarted && !mayHoldReport(job_.report)) {
    throw Failure(ExitStatus::Failed,
                  "--report " + job_.report + ": not written, because the file there is no report");
  }
  writeReport(job_.report, job_.program, isStarted ? *records_ : none, end.status, end.exitStatus,
              end.failure, watch_.milliseconds());
}

void RenderNews::endProgress(const End& end) {
  if (ended_.exchange(true)) return;
  if (RenderProgress* progress = shown())
    return progress->end(end.status, end.exitStatus, end.failure);
  RenderProgress(job_.progress, 0, false).end(end.status, end.exitStatus, end.failure);
}

}  // namespace vellumtide::cli
