#include "cli/render/frame_reader.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "cli/os/stopwatch.h"

namespace vellumtide::cli {
namespace {

using headless::World;

int reduced(int side, int downsample) {
  return (side + downsample - 1) / downsample;
}

// What the frame's file would be like if it were rendered now.
struct ExpectedFile {
  int width = 0, height = 0;
  SampleType samples = SampleType::UInt8;
};

// Nothing when the inputs do not tell.
std::optional<ExpectedFile> expectedFile(const PictureOptions& asked, const FrameTask& task) {
  try {
    std::vector<ImageShape> shapes;
    for (const LayerSource& input : task.inputs)
      shapes.push_back(readImageShape(input.file));
    if (shapes.empty()) shapes.push_back({*asked.width, *asked.height});
    int deepest = 8;
    for (const ImageShape& shape : shapes)
      deepest = std::max(deepest, headless::depthOfPixelFormat(shape.format));
    WriteOptions options;
    options.sampleType = asked.sampleType;
    options.preferHalf = !task.inputs.empty() && shapes.front().sampleType == SampleType::Half;
    const PF_PixelFormat format = headless::pixelFormatOfDepth(asked.depth.value_or(deepest));
    return ExpectedFile{reduced(shapes.front().width, asked.downsample),
                        reduced(shapes.front().height, asked.downsample),
                        writtenType(task.output, format, options)};
  } catch (const Failure&) {
    return {};
  }
}

// A file counts only when all its pixels can be read: another program may have left half of it.
bool isComplete(const PictureOptions& asked, const FrameTask& task) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(task.output, ignored)) return false;
  try {
    if (!holdsItsFormat(task.output)) return false;
    const ImageFile file = readImageFile(task.output);
    const std::optional<ExpectedFile> expected = expectedFile(asked, task);
    return !expected ||
           (file.pixels.width() == expected->width && file.pixels.height() == expected->height &&
            file.sampleType == expected->samples);
  } catch (const Failure&) {
    return false;
  }
}

LayerPictures readInput(const PictureOptions& asked, const FrameTask& task) {
  LayerPictures input = readPictures(task.inputs, asked.depth);
  if (input.pictures.empty()) {
    input.pictures.push_back({World(*asked.width, *asked.height, input.format), {1, 1}, ""});
  }
  if (asked.pixelAspect) input.pictures.front().pixelAspect = *asked.pixelAspect;
  input.write.sampleType = asked.sampleType;
  input.write.dropAlpha = asked.dropAlpha;
  input.write.compression = asked.compression;
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

ReadFrame readFrame(const PictureOptions& asked, const RenderPlan& plan, std::size_t index,
                    PictureBudget::Share share) {
  const Stopwatch watch;
  ReadFrame frame;
  frame.share = std::move(share);
  try {
    frame.task = plan.task(index);
    frame.isComplete = asked.skipExisting && isComplete(asked, frame.task);
    if (!frame.isComplete) {
      frame.input = readInput(asked, frame.task);
      checkWritable(frame.task.output, frame.input.write);
      frame.share.resize(bytesOf(frame.input, asked.downsample));
    }
  } catch (const std::exception& error) {
    frame.failure = failureOf(error);
  }
  frame.milliseconds = watch.milliseconds();
  return frame;
}

}  // namespace vellumtide::cli
