#include "cli/render/render_pipeline.h"

#include <exception>
#include <memory>
#include <utility>

#include "cli/os/stopwatch.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {

RenderPipeline::RenderPipeline(const WorkOptions& work, const PictureOptions& pictures,
                               const RenderPlan& plan, RenderRecords& records)
    : keepGoing_(work.keepGoing),
      records_(records),
      budget_(work.memory),
      writers_(work.threads),
      frames_(
          plan.size(), work.threads, [this] { return budget_.take(); },
          [&pictures, &plan](std::size_t index, PictureBudget::Share share) {
            return readFrame(pictures, plan, index, std::move(share));
          }) {}

RenderPipeline::~RenderPipeline() {
  halt();
}

void RenderPipeline::halt() {
  frames_.stop();
  budget_.close();
}

void RenderPipeline::stop() {
  halt();
  writers_.drop();
}

void RenderPipeline::run(const Renderer& renderer) {
  for (std::size_t index = 0; std::optional<ReadFrame> frame = frames_.take(); ++index) {
    renderFrame(index, *frame, renderer);
    records_.show();
  }
  writers_.finish();
  records_.show();
  if (ending_) throw *ending_;
}

void RenderPipeline::renderFrame(std::size_t index, ReadFrame& frame, const Renderer& renderer) {
  FrameRecord record{frame.task.number, utf8(frame.task.output)};
  record.readMs = frame.milliseconds;
  record.failure = frame.failure;
  if (frame.isComplete) {
    record.status = FrameStatus::Skipped;
    return end(index, std::move(record));
  }
  Picture picture;
  try {
    if (!record.failure) {
      const Stopwatch watch;
      picture = renderer.render(frame);
      record.renderMs = watch.milliseconds();
    }
  } catch (const std::exception& error) {
    record.failure = failureOf(error);
  }
  if (!record.failure) return writeFrame(index, frame, std::move(picture), std::move(record));
  if (renderer.endsJob(*record.failure)) {
    ending_ = record.failure;
    halt();
  }
  end(index, std::move(record));
}

void RenderPipeline::writeFrame(std::size_t index, ReadFrame& frame, Picture picture,
                                FrameRecord record) {
  struct Work {
    std::filesystem::path output;
    Picture picture;
    WriteOptions options;
    FrameRecord record;
    PictureBudget::Share share;
  };
  // Functions that wait in a queue have to be copyable, which a share is not.
  const auto work =
      std::make_shared<Work>(Work{frame.task.output, std::move(picture), frame.input.write,
                                  std::move(record), std::move(frame.share)});
  writers_.give([this, index, work] {
    const Stopwatch watch;
    try {
      writeImageFile(work->output, *work->picture.pixels, work->picture.pixelAspect, work->options);
      work->record.status = FrameStatus::Done;
    } catch (const std::exception& error) {
      work->record.failure = failureOf(error);
    }
    work->record.writeMs = watch.milliseconds();
    end(index, std::move(work->record));
  });
}

// From any thread.
void RenderPipeline::end(std::size_t index, FrameRecord record) {
  const bool failed = record.failure.has_value();
  if (failed) record.status = FrameStatus::Failed;
  records_.end(index, std::move(record));
  if (failed && !keepGoing_) halt();
}

}  // namespace vellumtide::cli
