#include <algorithm>
#include <memory>
#include <thread>

#include "cli/commands/commands.h"
#include "cli/commands/option_checks.h"
#include "cli/files/file_guard.h"
#include "cli/files/output_target.h"
#include "cli/help/argument_words.h"
#include "cli/render/render_watch.h"
#include "cli/sequence/frame_sequence.h"
#include "cli/text/failure.h"
#include "cli/text/number_text.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

// Texts as typed, before they are understood.
struct RenderTexts {
  std::string size, frames, fps, aspect, sampleType, missing = "stop", progress = "auto";
  bool watch = false;
  int depth = 0, memory = 1024;
};

// In the order of the enumerations.
const std::vector<std::string> kMissing = {"stop", "hold", "black"};
const std::vector<std::string> kStyles = {"auto", "bar", "plain", "json", "openjd", "none"};

template <typename Enum>
Enum chosen(const std::vector<std::string>& names, const std::string& name) {
  return static_cast<Enum>(std::find(names.begin(), names.end(), name) - names.begin());
}

PF_RationalScale ratioOption(const char* option, const std::string& text) {
  const std::optional<PF_RationalScale> ratio = parseRatio(text);
  if (!ratio)
    failUsage(
        std::string(option) + " " + text +
        ": expected a number from 0.0001 to 1e9, or A/B in whole numbers from 1 to 1000000000");
  return *ratio;
}

void readSize(const std::string& text, RenderJob& job) {
  const std::size_t x = text.find('x');
  const double width = parseNumber(text.substr(0, x)).value_or(0);
  const double height = x == std::string::npos ? 0 : parseNumber(text.substr(x + 1)).value_or(0);
  const auto isSide = [](double side) { return side >= 1 && side == static_cast<int>(side); };
  if (isTooLarge(width, height, 4) || !isSide(width) || !isSide(height)) {
    failUsage("--size " + text + ": expected WIDTHxHEIGHT, each from 1 to " +
              std::to_string(kLargestSide));
  }
  job.width = static_cast<int>(width);
  job.height = static_cast<int>(height);
}

// What shares standard output with nothing else: the picture, the report, lines of progress.
void checkStandardOutput(const RenderJob& job) {
  const bool isProgress =
      job.progress == ProgressStyle::Json || job.progress == ProgressStyle::OpenJd;
  for (const auto& [option, file] : {std::pair("-o", job.output), {"--report", job.report}}) {
    if (isStandardOutput(pathOf(file)) && isProgress)
      failUsage(std::string(option) + " -: standard output is for the lines of --progress");
  }
  requireNoTerminal("-o", pathOf(job.output));
}

void understand(const RenderTexts& texts, RenderJob& job) {
  job.progress = chosen<ProgressStyle>(kStyles, texts.progress);
  if (!texts.size.empty()) readSize(texts.size, job);
  if (!texts.size.empty() && !job.inputs.empty())
    failUsage("--size: the input image gives the size");
  if (!texts.fps.empty()) job.framesPerSecond = ratioOption("--fps", texts.fps);
  if (!texts.aspect.empty()) job.pixelAspect = ratioOption("--pixel-aspect", texts.aspect);
  if (texts.depth != 0) job.depth = texts.depth;
  for (SampleType type :
       {SampleType::UInt8, SampleType::UInt16, SampleType::Half, SampleType::Float}) {
    if (texts.sampleType == name(type)) job.sampleType = type;
  }
  if (!texts.frames.empty()) job.frames = parseFrames(texts.frames);
  job.missing = chosen<Missing>(kMissing, texts.missing);
  job.memory = std::size_t(texts.memory) << 20;
  checkStandardOutput(job);
  checkWritable(
      job.frames.empty() ? pathOf(job.output) : frameName(pathOf(job.output), job.frames[0]),
      {.sampleType = job.sampleType});
}

}  // namespace

void addRenderCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("render", "Render images through a kernel or a graph");
  const auto job = std::make_shared<RenderJob>();
  const auto texts = std::make_shared<RenderTexts>();
  // Reading and writing go on beside the drawing, which takes processors of its own here.
  job->threads = std::clamp(static_cast<int>(std::thread::hardware_concurrency()) / 2, 1, 8);
  command->add_option("PROGRAM", job->program, "kernel (.pbk) or graph (.pbg)")->required();
  command
      ->add_option(
          "-i,--input", job->inputs,
          "image for the program's next input: PNG, TIFF or OpenEXR; give -i up to four times")
      ->allow_extra_args(false);
  command->add_option("--size", texts->size, "WxH of a transparent layer, instead of an image");
  command->add_option("-o,--output", job->output, "file to write: .png, .tif or .exr")->required();
  command
      ->add_option(
          "-p,--set", job->settings,
          "NAME=VALUE: set the control labelled NAME (see inspect) to a number, true, x,y, "
          "#rrggbb, an entry of a pop-up, or a,b,c for a vector")
      ->allow_extra_args(false);
  command
      ->add_option(
          "-k,--key", job->keys,
          "NAME@FRAME=VALUE: a keyframe of a control, FRAME as 12, 12.5 or 0.5s (seconds); "
          "NAME@FRAME:hold=VALUE stays until the next key")
      ->allow_extra_args(false);
  command
      ->add_option("--animation", job->animationFiles,
                   "JSON file of keyframes: {\"NAME\": [{\"frame\": N, \"value\": V}, ...], ...}")
      ->allow_extra_args(false);
  command
      ->add_option("--depth", texts->depth, "bits a channel to render with (default: the input's)")
      ->check(CLI::IsMember({"8", "16", "32"}));
  command
      ->add_option("--sample-type", texts->sampleType,
                   "samples of the file written (default: by depth)")
      ->check(CLI::IsMember({"uint8", "uint16", "half", "float"}));
  command
      ->add_option("--compression", job->compression,
                   "of PNG and TIFF files, from 0 (fast) to 9 (small)")
      ->check(wholeNumber(0, 9))
      ->capture_default_str();
  command->add_flag("--no-alpha", job->dropAlpha, "write red, green and blue only");
  command->add_option("--downsample", job->downsample, "render at 1/N of the resolution")
      ->check(wholeNumber(1, 64));
  command->add_option("--pixel-aspect", texts->aspect,
                      "width of a pixel over its height, as 10/11 or 0.909");
  command->add_option("--frames", texts->frames,
                      "render a sequence: 1-100, 1-99x2, 10-1, -5--1 or 3,5,10-20; the names hold "
                      "#### or %04d (default: the frames of the first numbered input)");
  command->add_option("--fps", texts->fps, "frames a second, as 25 or 30000/1001 (default: 24)");
  command
      ->add_option("--missing", texts->missing, "what stands in for an input frame that is absent")
      ->check(CLI::IsMember(kMissing))
      ->capture_default_str();
  command->add_flag("--keep-going", job->keepGoing,
                    "render the other frames when one fails, list those at the end, exit with 1");
  command->add_flag("--skip-existing", job->skipExisting,
                    "leave out frames whose output is there and can be read whole");
  command->add_option("--progress", texts->progress, "how to report frames")
      ->check(CLI::IsMember(kStyles))
      ->capture_default_str();
  command->add_option("--report", job->report, "JSON file to write about every frame");
  command->add_option("--threads", job->threads, "threads that read, and as many that write")
      ->check(wholeNumber(1, 64))
      ->capture_default_str();
  command
      ->add_option("--memory", texts->memory,
                   "MiB that pictures between reading and writing may take")
      ->check(wholeNumber(1, 1 << 20))
      ->capture_default_str();
  command->add_option("--module", job->module, "the effect module to use");
  command->add_flag("--watch", texts->watch, "stay, and render again when a file changes")
      ->excludes("--skip-existing");
  command->callback([job, texts] {
    try {
      understand(*texts, *job);
    } catch (const std::exception& error) {
      tellFailure(*job, failureOf(error));
      throw;
    }
    if (texts->watch) watchRenderJob(*job);
    runRenderJob(*job);
  });
}

void tellWrongRender(const std::vector<std::string>& words, const std::string& message) {
  RenderJob job;
  if (words.size() > 1 && !words[1].starts_with('-')) job.program = words[1];
  job.report = valueIn(words, "--report");
  const std::string style = valueIn(words, "--progress");
  job.progress = std::count(kStyles.begin(), kStyles.end(), style) != 0
                     ? chosen<ProgressStyle>(kStyles, style)
                     : ProgressStyle::None;
  tellFailure(job, Failure(ExitStatus::Usage, message));
}

}  // namespace vellumtide::cli
