#include "cli/render/render_files.h"

#include "cli/files/file_guard.h"
#include "cli/os/module_file.h"
#include "cli/text/messages.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

bool isSequence(const fs::path& input) {
  return isNumbered(input) && !InputFrames(input, Missing::Stop).isStill();
}

// Of a job that does not say which, those on disk of its first sequence.
std::vector<int> framesOf(const FrameOptions& job) {
  if (!job.frames.empty()) return job.frames;
  for (const std::string& input : job.inputs) {
    if (isSequence(pathOf(input))) return framesOnDisk(pathOf(input));
  }
  return {};
}

// Calls action(file) for every file that may be read for the input.
template <typename Action>
void forEachFrame(const fs::path& input, const FrameOptions& job, const std::vector<int>& frames,
                  Action action) {
  if (!isSequence(input)) return action(input);
  for (int frame : frames)
    action(frameName(input, frame));
  if (job.missing == Missing::Stop) return;
  // Any of these may stand in for one that is absent.
  for (int frame : framesOnDisk(input))
    action(frameName(input, frame));
}

template <typename Action>
void forEachPicture(const FrameOptions& job, const std::vector<int>& frames, Action action) {
  const fs::path output = pathOf(job.output);
  if (frames.empty() || !isNumbered(output)) return action(output);
  for (int frame : frames)
    action(frameName(output, frame));
}

FileGuard guardOf(const RenderJob& job, const std::vector<int>& frames) {
  FileGuard guard;
  guard.reads("the program", pathOf(job.program));
  for (const std::string& file : job.animationFiles)
    guard.reads("the animation", pathOf(file));
  if (const std::optional<fs::path> module = moduleFile(job.module))
    guard.reads("the effect module", *module);
  for (const std::string& input : job.inputs) {
    forEachFrame(pathOf(input), job, frames,
                 [&](const fs::path& file) { guard.reads("the input", file); });
  }
  return guard;
}

}  // namespace

void requireReportApart(const RenderJob& job) {
  if (job.report.empty()) return;
  const std::vector<int> frames = framesOf(job);
  FileGuard guard = guardOf(job, frames);
  forEachPicture(job, frames, [&](const fs::path& file) { guard.reads("the picture", file); });
  guard.writes("--report", pathOf(job.report));
}

void requirePicturesApart(const RenderJob& job) {
  const std::vector<int> frames = framesOf(job);
  FileGuard guard = guardOf(job, frames);
  if (!job.report.empty()) guard.writes("--report", pathOf(job.report));
  forEachPicture(job, frames, [&](const fs::path& file) { guard.writes("-o", file); });
}

void sayOtherSpellings(const FrameOptions& job) {
  for (const std::string& input : job.inputs) {
    if (!isSequence(pathOf(input))) continue;
    const std::vector<fs::path> files = otherSpellings(pathOf(input));
    if (files.empty()) continue;
    const std::string more =
        files.size() == 1 ? "" : " and " + std::to_string(files.size() - 1) + " more";
    say(input + ": " + utf8(files.front()) + more +
        " left out: the number is not written as in this name");
  }
}

}  // namespace vellumtide::cli
