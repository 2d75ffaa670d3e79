#include "cli/render/render_job.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>

#include "cli/control/animation.h"
#include "cli/os/interruption.h"
#include "cli/render/render_files.h"
#include "cli/render/render_news.h"
#include "cli/render/render_pipeline.h"
#include "cli/render/render_report.h"
#include "cli/sequence/frame_list.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

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

// One run of a job, from its plan to its end.
class Run {
 public:
  Run(const RenderJob& job, RenderNews& news) : job_(job), renderer_(job), plan_(job), news_(news) {
    news_.start(plan_);
  }

  // Throws the Failure that the program ends with. A signal that left frames undone ends the
  // process: what a thread still reads, perhaps for ever, is nobody's any more.
  void work() {
    RenderPipeline pipeline(job_, job_, plan_, records());
    const Interruption interruption([&] { pipeline.stop(); }, news_.lastSteps());
    std::optional<Failure> failure;
    try {
      pipeline.run({[this](ReadFrame& frame) { return renderer_.render(frame); },
                    [this](const Failure& f) { return renderer_.endsJob(f); }});
      if (Interruption::signal() == 0) renderer_.finish();
      failure = outcome();
    } catch (const Failure& ending) {
      failure = ending;
    }
    if (const int signal = Interruption::signal(); signal != 0 && !isComplete()) {
      news_.interrupted(signal);
      endInterrupted(signal);
    }
    if (failure && !job_.frames.empty()) sayOtherSpellings(job_);
    if (failure) throw *failure;
    news_.done();
  }

 private:
  RenderRecords& records() const { return news_.records(); }

  // What the frames come to.
  std::optional<Failure> outcome() const {
    const std::size_t failed = records().count(FrameStatus::Failed);
    if (failed == 0 || !plan_.isSequence() || !job_.keepGoing) return records().firstFailure();
    return Failure(ExitStatus::Failed,
                   std::to_string(failed) + " of " + std::to_string(records().total()) +
                       " frames failed: " + frameListText(records().frames({FrameStatus::Failed})));
  }

  bool isComplete() const {
    return records().count(FrameStatus::Done) + records().count(FrameStatus::Skipped) ==
           records().total();
  }

  const RenderJob& job_;
  Renderer renderer_;
  RenderPlan plan_;
  RenderNews& news_;
};

// No file is written over one that the job reads or writes.
void requireApart(const RenderJob& job, RenderNews& news) {
  try {
    requireReportApart(job);
  } catch (const Failure&) {
    news.leaveReport();
    throw;
  }
  requirePicturesApart(job);
}

}  // namespace

void runRenderJob(const RenderJob& job) {
  RenderNews news(job);
  const Interruption interruption({}, news.lastSteps());
  try {
    if (!job.report.empty()) checkReport(job.report);
    requireApart(job, news);
    if (job.frames.empty()) sayOtherSpellings(job);
    Run(job, news).work();
  } catch (const std::exception& error) {
    const Failure failure = failureOf(error);
    news.failed(failure);
    if (dynamic_cast<const Failure*>(&error)) throw;
    throw failure;
  }
}

void tellFailure(const RenderJob& job, const Failure& failure) {
  RenderNews(job).failed(failure);
}

}  // namespace vellumtide::cli
