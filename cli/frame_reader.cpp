#include "cli/frame_reader.h"

#include <exception>
#include <utility>

#include "cli/stopwatch.h"

namespace vellumtide::cli {
namespace {

using headless::World;

int reduced(int side, int downsample) {
  return (side + downsample - 1) / downsample;
}

// The size that the frame's output has to have; nothing when no input tells.
std::optional<ImageShape> expectedShape(const RenderJob& job, const FrameTask& task) {
  if (job.width) return ImageShape{*job.width, *job.height};
  try {
    return readImageShape(task.inputs.front().file);
  } catch (const Failure&) {
    return {};
  }
}

// A file counts only when all its pixels can be read: another program may have left half of it.
bool isComplete(const RenderJob& job, const FrameTask& task) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(task.output, ignored)) return false;
  try {
    const World pixels = readImageFile(task.output).pixels;
    const std::optional<ImageShape> shape = expectedShape(job, task);
    return !shape || (pixels.width() == reduced(shape->width, job.downsample) &&
                      pixels.height() == reduced(shape->height, job.downsample));
  } catch (const Failure&) {
    return false;
  }
}

LayerPictures readInput(const RenderJob& job, const FrameTask& task) {
  LayerPictures input = readPictures(task.inputs, job.depth);
  if (input.pictures.empty()) {
    input.pictures.push_back({World(*job.width, *job.height, input.format), {1, 1}, ""});
  }
  if (job.pixelAspect) input.pictures.front().pixelAspect = *job.pixelAspect;
  input.write.sampleType = job.sampleType;
  input.write.dropAlpha = job.dropAlpha;
  input.write.compression = job.compression;
  return input;
}

std::size_t bytesOf(const LayerPictures& input, int downsample) {
  const auto bytes = [](int width, int height, PF_PixelFormat format) {
    return std::size_t(width) * height * headless::bytesPerPixel(format);
  };
  const World& first = input.pictures.front().pixels;
  std::size_t sum =
      bytes(reduced(first.width(), downsample), reduced(first.height(), downsample), input.format);
  for (const LayerPicture& picture : input.pictures)
    sum += bytes(picture.pixels.width(), picture.pixels.height(), input.format);
  return sum;
}

}  // namespace

ReadFrame readFrame(const RenderJob& job, const RenderPlan& plan, std::size_t index,
                    PictureBudget::Share share) {
  const Stopwatch watch;
  ReadFrame frame;
  frame.share = std::move(share);
  try {
    frame.task = plan.task(index);
    frame.isComplete = job.skipExisting && isComplete(job, frame.task);
    if (!frame.isComplete) {
      frame.input = readInput(job, frame.task);
      checkWritable(frame.task.output, frame.input.write);
      frame.share.resize(bytesOf(frame.input, job.downsample));
    }
  } catch (const std::exception& error) {
    frame.failure = failureOf(error);
  }
  frame.milliseconds = watch.milliseconds();
  return frame;
}

}  // namespace vellumtide::cli
