#include "cli/render_job.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>

#include "cli/control_panel.h"
#include "cli/failure.h"
#include "cli/frame_sequence.h"
#include "cli/layer_pictures.h"
#include "cli/progress.h"
#include "cli/utf8_path.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;
using headless::World;

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

LayerPictures readInputs(const RenderJob& job, int frame) {
  std::vector<fs::path> files;
  for (const std::string& pattern : job.inputs) {
    files.push_back(job.frames.empty() ? pathOf(pattern) : frameName(pathOf(pattern), frame));
  }
  LayerPictures input = readPictures(files, job.depth);
  if (input.pictures.empty()) {
    input.pictures.push_back({World(*job.width, *job.height, input.format), {1, 1}, ""});
  }
  if (job.pixelAspect) input.pictures.front().pixelAspect = *job.pixelAspect;
  input.write.sampleType = job.sampleType;
  input.write.dropAlpha = job.dropAlpha;
  for (const LayerPicture& picture : input.pictures) {
    requireRoom(picture.pixels, input.format, job.downsample);
  }
  return input;
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
    LayerPictures input = readInputs(job_, frame);
    checkWritable(output, input.write);
    const PF_RationalScale aspect = input.pictures.front().pixelAspect;
    if (!session_) {
      start(std::move(input.pictures));
    } else {
      session_->setPictures(std::move(input.pictures));
    }
    const auto world =
        session_->render(session_->effect(), renderOptions(job_, input.format, frame));
    writeImageFile(output, *world, static_cast<double>(aspect.num) / aspect.den, input.write);
    return output;
  }

  bool hasStarted() const { return session_ != nullptr; }

  void finish() {
    if (session_) session_->finish();
  }

 private:
  void start(std::vector<LayerPicture> pictures) {
    session_ =
        std::make_unique<RenderSession>(job_.module, job_.program, program_, std::move(pictures));
    ControlPanel panel(program_, session_->effect());
    for (const std::string& setting : job_.settings)
      panel.set(setting);
  }

  const RenderJob& job_;
  Program program_;
  std::unique_ptr<RenderSession> session_;
};

// What would fail for every frame ends the job; what one frame's files cause does not.
bool endsJob(const Failure& failure, const RenderJob& job, const Renderer& renderer) {
  const bool isImage = failure.status == ExitStatus::Image;
  const bool isFrame = failure.status == ExitStatus::Failed && renderer.hasStarted();
  return job.stopOnError || !(isImage || isFrame);
}

void renderSequence(const RenderJob& job, Renderer& renderer) {
  Progress progress(job.frames.size(), job.showProgress || standardErrorIsTerminal());
  std::size_t failed = 0;
  for (int frame : job.frames) {
    try {
      progress.frameDone(utf8(renderer.renderFrame(frame)));
    } catch (const Failure& failure) {
      progress.breakLine();
      if (endsJob(failure, job, renderer)) throw;
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
  renderer.finish();
}

}  // namespace vellumtide::cli
