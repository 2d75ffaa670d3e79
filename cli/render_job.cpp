#include "cli/render_job.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>

#include "cli/control_panel.h"
#include "cli/device_limits.h"
#include "cli/failure.h"
#include "cli/frame_sequence.h"
#include "cli/module_file.h"
#include "cli/number_text.h"
#include "cli/progress.h"
#include "cli/render_session.h"
#include "cli/utf8_path.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;
using headless::World;

constexpr std::size_t kMostInputs = 4;  // the effect's own layer and three layer controls

// What is read for one frame.
struct FrameInput {
  std::vector<LayerPicture> pictures;
  PF_PixelFormat format = PF_PixelFormat_ARGB32;
  WriteOptions write;
};

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

FrameInput readInputs(const RenderJob& job, int frame) {
  FrameInput result;
  int depth = 8;
  result.write.sampleType = job.sampleType;
  result.write.dropAlpha = job.dropAlpha;
  for (const std::string& pattern : job.inputs) {
    const fs::path path = job.frames.empty() ? pathOf(pattern) : frameName(pathOf(pattern), frame);
    ImageFile file = readImageFile(path);
    depth = std::max(depth, headless::depthOfPixelFormat(file.pixels.format()));
    if (result.pictures.empty()) {
      result.write.straightAlpha = file.straightAlpha;
      result.write.preferHalf = file.sampleType == SampleType::Half;
    }
    result.pictures.push_back({std::move(file.pixels), closestRatio(file.pixelAspect)});
  }
  result.format = headless::pixelFormatOfDepth(job.depth.value_or(depth));
  if (result.pictures.empty())
    result.pictures.push_back({World(*job.width, *job.height, result.format), {1, 1}});
  if (job.pixelAspect) result.pictures.front().pixelAspect = *job.pixelAspect;
  return result;
}

// A texture that the device refuses would leave the picture empty without a word.
void checkDeviceSize(const RenderJob& job, const FrameInput& input) {
  for (const LayerPicture& picture : input.pictures) {
    const int width = (picture.pixels.width() + job.downsample - 1) / job.downsample;
    const int height = (picture.pixels.height() + job.downsample - 1) / job.downsample;
    if (deviceTakes(width, height, input.format)) continue;
    throw Failure(ExitStatus::Image,
                  "a picture of " + std::to_string(width) + " x " + std::to_string(height) +
                      " pixels at depth " +
                      std::to_string(headless::depthOfPixelFormat(input.format)) +
                      " is too large for this GL device");
  }
}

headless::RenderOptions renderOptions(const RenderJob& job, PF_PixelFormat format, int frame) {
  headless::RenderOptions options;
  options.format = format;
  options.downsampleX = options.downsampleY = {1, static_cast<A_u_long>(job.downsample)};
  options.timeScale = static_cast<A_u_long>(job.framesPerSecond.num);
  options.timeStep = static_cast<A_long>(job.framesPerSecond.den);
  const std::int64_t time = std::int64_t{frame} * options.timeStep;
  if (time > std::numeric_limits<A_long>::max()) {
    throw Failure(ExitStatus::Usage,
                  "frame " + std::to_string(frame) + ": the host's time ends before it");
  }
  options.time = static_cast<A_long>(time);
  return options;
}

class Renderer {
 public:
  explicit Renderer(const RenderJob& job) : job_(job), program_(readProgram(pathOf(job.program))) {
    checkInputCount(job, program_);
  }

  // Reads, renders and writes one frame. The session starts with the first frame that can be read,
  // because an effect is applied to a layer with pixels.
  fs::path renderFrame(int frame) {
    const fs::path output =
        job_.frames.empty() ? pathOf(job_.output) : frameName(pathOf(job_.output), frame);
    FrameInput input = readInputs(job_, frame);
    checkWritable(output, input.write);
    checkDeviceSize(job_, input);
    const PF_RationalScale aspect = input.pictures.front().pixelAspect;
    if (!session_) {
      start(std::move(input.pictures));
    } else {
      session_->setPictures(std::move(input.pictures));
    }
    const auto world = session_->render(renderOptions(job_, input.format, frame));
    writeImageFile(output, *world, static_cast<double>(aspect.num) / aspect.den, input.write);
    return output;
  }

  std::string finish() { return session_ ? session_->finish() : ""; }

 private:
  void start(std::vector<LayerPicture> pictures) {
    session_ = std::make_unique<RenderSession>(loadModule(job_.module), job_.program, program_,
                                               std::move(pictures));
    ControlPanel panel(program_, session_->effect());
    for (const std::string& setting : job_.settings)
      panel.set(setting);
  }

  const RenderJob& job_;
  Program program_;
  std::unique_ptr<RenderSession> session_;
};

// What would fail for every frame ends the job; what one frame's files cause does not.
bool endsJob(const Failure& failure, const RenderJob& job) {
  const bool oneFrameOnly =
      failure.status == ExitStatus::Image || failure.status == ExitStatus::Failed;
  return job.stopOnError || !oneFrameOnly;
}

void renderSequence(const RenderJob& job, Renderer& renderer) {
  Progress progress(job.frames.size(), job.showProgress || standardErrorIsTerminal());
  std::size_t failed = 0;
  for (int frame : job.frames) {
    try {
      progress.frameDone(utf8(renderer.renderFrame(frame)));
    } catch (const Failure& failure) {
      progress.breakLine();
      if (endsJob(failure, job)) throw;
      std::fprintf(stderr, "vellumtide: frame %d: %s\n", frame, failure.what());
      ++failed;
    }
  }
  if (failed > 0) {
    throw Failure(ExitStatus::Failed, std::to_string(failed) + " of " +
                                          std::to_string(job.frames.size()) + " frames failed");
  }
}

}  // namespace

void runRenderJob(const RenderJob& job) {
  Renderer renderer(job);
  if (job.frames.empty()) {
    renderer.renderFrame(0);
  } else {
    renderSequence(job, renderer);
  }
  const std::string faults = renderer.finish();
  if (!faults.empty()) {
    throw Failure(ExitStatus::Failed,
                  "the pictures are written, but the module broke the host's rules:\n" + faults);
  }
}

}  // namespace vellumtide::cli
