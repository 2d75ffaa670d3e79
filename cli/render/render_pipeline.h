// The frames of a job on their way: read ahead on threads, rendered one after the other on the
// caller's thread, written behind on threads.
#pragma once

#include <functional>

#include "cli/render/frame_reader.h"
#include "cli/render/render_records.h"
#include "cli/sequence/read_ahead.h"
#include "cli/sequence/write_behind.h"

namespace vellumtide::cli {

class RenderPipeline {
 public:
  // A picture to write, in the pixels of the host.
  struct Picture {
    std::shared_ptr<headless::World> pixels;
    double pixelAspect = 1;
  };
  // Renders one frame; may take its pictures away. A Failure that it throws is the frame's, unless
  // `endsJob` says that it is everybody's.
  struct Renderer {
    std::function<Picture(ReadFrame&)> render;
    std::function<bool(const Failure&)> endsJob;
  };

  // All must outlive the pipeline.
  RenderPipeline(const WorkOptions& work, const PictureOptions& pictures, const RenderPlan& plan,
                 RenderRecords& records);
  ~RenderPipeline();

  // Works until all frames have ended, or stop(), or the first failed frame when the job does not
  // keep going; then finishes writing what is rendered. Throws the Failure that ends the job.
  void run(const Renderer& renderer);

  // Ends the work soon: nothing more is read, rendered or begun to be written. From any thread.
  void stop();

 private:
  void renderFrame(std::size_t index, ReadFrame& frame, const Renderer& renderer);
  void writeFrame(std::size_t index, ReadFrame& frame, Picture picture, FrameRecord record);
  void end(std::size_t index, FrameRecord record);
  void halt();

  const bool keepGoing_;
  RenderRecords& records_;
  std::optional<Failure> ending_;  // what no other frame would survive
  PictureBudget budget_;
  WriteBehind writers_;
  ReadAhead<ReadFrame> frames_;
};

}  // namespace vellumtide::cli
