#include "cli/render_job.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <limits>
#include <memory>

#include "cli/animation.h"
#include "cli/failure.h"
#include "cli/interruption.h"
#include "cli/messages.h"
#include "cli/pending_file.h"
#include "cli/render_files.h"
#include "cli/render_pipeline.h"
#include "cli/render_report.h"
#include "cli/stopwatch.h"
#include "cli/utf8_path.h"

namespace vellumtide::cli {
namespace {

constexpr std::size_t kMostInputs = 4;  // the effect's own layer and three layer controls

// A program that takes no image still has a layer, which gives the picture its size.
void checkInputCount(const RenderJob& job, const Program& program) {
  const std::size_t most = std::clamp<std::size_t>(program.inputs().size(), 1, kMostInputs);
  if (job.inputs.size() > most) {
    throw Failure(ExitStatus::Usage, job.program + ": takes " + std::to_string(most) +
                                         (most == 1 ? " image" : " images") + ", not " +
                                         std::to_string(job.inputs.size()));
  }
  if (job.inputs.empty() && !job.width) {
    throw Failure(ExitStatus::Usage, "no input image: give one with -i, or a size with --size");
  }
}

headless::RenderOptions renderOptions(const RenderJob& job, PF_PixelFormat format, int frame) {
  headless::RenderOptions options;
  options.format = format;
  options.downsampleX = options.downsampleY = {1, static_cast<A_u_long>(job.downsample)};
  options.timeScale = static_cast<A_u_long>(job.framesPerSecond.num);
  options.timeStep = static_cast<A_long>(job.framesPerSecond.den);
  const std::int64_t time = std::int64_t{frame} * options.timeStep;
  if (time > std::numeric_limits<A_long>::max() || time < std::numeric_limits<A_long>::min()) {
    throw Failure(ExitStatus::Usage,
                  "frame " + std::to_string(frame) + ": the host's time ends before it");
  }
  options.time = static_cast<A_long>(time);
  return options;
}

// The program on its effect instance. The session starts with the first frame that could be read,
// because an effect is applied to a layer with pixels.
class Renderer {
 public:
  explicit Renderer(const RenderJob& job) : job_(job), program_(readProgram(pathOf(job.program))) {
    checkInputCount(job, program_);
    for (const std::string& file : job.animationFiles)
      animation_.addFile(pathOf(file));
    for (const std::string& key : job.keys)
      animation_.addKey(key);
  }

  RenderPipeline::Picture render(ReadFrame& frame) {
    for (const LayerPicture& picture : frame.input.pictures) {
      requireRoom(picture.pixels, frame.input.format, job_.downsample);
    }
    const PF_RationalScale aspect = frame.input.pictures.front().pixelAspect;
    if (!session_) {
      start(std::move(frame.input.pictures));
    } else {
      session_->setPictures(std::move(frame.input.pictures));
    }
    const int number = frame.task.number.value_or(0);
    animation_.apply(number);
    return {session_->render(session_->effect(), renderOptions(job_, frame.input.format, number)),
            static_cast<double>(aspect.num) / aspect.den};
  }

  // What would fail for every frame ends the job; what one frame's files cause does not.
  bool endsJob(const Failure& failure) const {
    const bool isFrame = failure.status == ExitStatus::Failed && session_ != nullptr;
    return failure.status != ExitStatus::Image && !isFrame;
  }

  void finish() {
    if (session_) session_->finish();
  }

 private:
  void start(std::vector<LayerPicture> pictures) {
    auto session =
        std::make_unique<RenderSession>(job_.module, job_.program, program_, std::move(pictures));
    panel_.emplace(program_, session->effect());
    for (const std::string& setting : job_.settings) {
      try {
        panel_->set(setting);
      } catch (const Failure& failure) {
        if (!job_.misfit) throw;
        job_.misfit(failure);
      }
    }
    animation_.bind(*panel_, job_.framesPerSecond, job_.misfit);
    session_ = std::move(session);
  }

  const RenderJob& job_;
  Program program_;
  Animation animation_;
  std::unique_ptr<RenderSession> session_;
  std::optional<ControlPanel> panel_;
};

std::vector<FrameRecord> recordsOf(const RenderPlan& plan) {
  std::vector<FrameRecord> records(plan.size());
  for (std::size_t i = 0; i < records.size(); ++i) {
    const FrameTask task = plan.task(i);
    records[i].frame = task.number;
    records[i].file = utf8(task.output);
  }
  return records;
}

std::string interruptionText(int signal, const RenderRecords& records, bool isSequence) {
  const std::string text = std::string("interrupted by ") + signalName(signal);
  if (!isSequence) return text + ": nothing was written";
  const std::vector<int> left = records.frames({FrameStatus::Waiting, FrameStatus::Failed});
  const std::size_t complete = records.total() - left.size();
  const std::string counted = text + ": " + std::to_string(complete) + " of " +
                              std::to_string(records.total()) + " frames are complete";
  if (left.empty()) return counted;
  return counted + "\nTo go on, run the same command with --skip-existing, or with --frames " +
         frameListText(left);
}

// One run of a job, from its plan to its report.
class Run {
 public:
  explicit Run(const RenderJob& job)
      : job_(job),
        renderer_(job),
        plan_(job),
        progress_(job.progress, plan_.size(), plan_.isSequence()),
        records_(recordsOf(plan_), progress_, job.keepGoing && plan_.isSequence()) {}

  // Returns the signal that ended it early, or 0. Throws the Failure that the program ends with.
  int work() {
    RenderPipeline pipeline(job_, plan_, records_);
    const Interruption interruption([&](int) { pipeline.stop(); }, [&](int s) { endLate(s); });
    std::optional<Failure> failure;
    try {
      pipeline.run({[this](ReadFrame& frame) { return renderer_.render(frame); },
                    [this](const Failure& f) { return renderer_.endsJob(f); }});
      if (Interruption::signal() == 0) renderer_.finish();
      failure = outcome();
    } catch (const Failure& ending) {
      failure = ending;
    }
    const int signal = Interruption::signal();
    if (signal != 0 && !isComplete()) {
      progress_.breakLine();
      const std::string text = interruptionText(signal, records_, plan_.isSequence());
      say(text);
      conclude("interrupted", 128 + signal, text);
      return signal;
    }
    if (failure && !job_.frames.empty()) sayOtherSpellings(job_);
    conclude(failure ? "failed" : "done", failure ? static_cast<int>(failure->status) : 0,
             failure ? failure->what() : "");
    if (failure) throw *failure;
    return 0;
  }

 private:
  // What the frames come to.
  std::optional<Failure> outcome() const {
    const std::size_t failed = records_.count(FrameStatus::Failed);
    if (failed == 0 || !plan_.isSequence() || !job_.keepGoing) return records_.firstFailure();
    return Failure(ExitStatus::Failed,
                   std::to_string(failed) + " of " + std::to_string(records_.total()) +
                       " frames failed: " + frameListText(records_.frames({FrameStatus::Failed})));
  }

  bool isComplete() const {
    return records_.count(FrameStatus::Done) + records_.count(FrameStatus::Skipped) ==
           records_.total();
  }

  void conclude(const std::string& status, int exitStatus, const std::string& failure) {
    progress_.end(status, exitStatus, failure);
    if (job_.report.empty()) return;
    writeReport(job_, records_, status, exitStatus, failure, watch_.milliseconds());
  }

  // The driver or a slow disk has not let go in time: the process ends with what is complete.
  void endLate(int signal) {
    const std::string text = interruptionText(signal, records_, plan_.isSequence());
    say(text);
    try {
      conclude("interrupted", 128 + signal, text);
    } catch (const Failure& failure) {
      say(failure.what());
    }
    abandonPendingFiles();
    ScratchFolder::removeAll();
  }

  const RenderJob& job_;
  Stopwatch watch_;
  Renderer renderer_;
  RenderPlan plan_;
  RenderProgress progress_;
  RenderRecords records_;
};

}  // namespace

void runRenderJob(const RenderJob& job) {
  if (!job.report.empty()) checkReport(job.report);
  requireReportApart(job);
  if (job.frames.empty()) sayOtherSpellings(job);
  std::optional<Run> run;
  try {
    requirePicturesApart(job);
    run.emplace(job);
  } catch (const Failure& failure) {
    RenderProgress progress(job.progress, 0, false);
    progress.end("failed", static_cast<int>(failure.status), failure.what());
    if (!job.report.empty()) {
      writeReport(job, RenderRecords({}, progress, false), "failed",
                  static_cast<int>(failure.status), failure.what(), 0);
    }
    throw;
  }
  const int signal = run->work();
  if (signal == 0) return;
  run.reset();
  endBySignal(signal);
}

}  // namespace vellumtide::cli
