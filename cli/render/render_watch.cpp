#include "cli/render/render_watch.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <set>
#include <thread>

#include "cli/files/file_watch.h"
#include "cli/os/interruption.h"
#include "cli/os/module_file.h"
#include "cli/os/stopwatch.h"
#include "cli/program/program_changes.h"
#include "cli/render/render_plan.h"
#include "cli/text/failure.h"
#include "cli/text/messages.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

constexpr double kLookEveryMs = 100;
constexpr double kLookShare = 10;  // of the time at most one part in this many goes into looking
constexpr int kLooksUntilListed = 10;  // looks at the known files between two looks for new ones

std::vector<fs::path> filesRead(const RenderJob& job) {
  std::vector<fs::path> files{pathOf(job.program)};
  for (const std::string& file : job.animationFiles)
    files.push_back(pathOf(file));
  for (const std::string& input : job.inputs)
    files.push_back(pathOf(input));
  try {
    const RenderPlan plan(job);
    for (std::size_t i = 0; i < plan.size(); ++i) {
      const FrameTask task = plan.task(i);
      for (const LayerSource& input : task.inputs)
        files.push_back(input.file);
      // Where another file stands in for an absent one, that may still come.
      for (const std::string& input : job.inputs) {
        if (task.number) files.push_back(frameName(pathOf(input), *task.number));
      }
    }
  } catch (const Failure&) {
    // The pass says what is wrong with the names.
  }
  return files;
}

class Watcher {
 public:
  explicit Watcher(RenderJob job) : job_(std::move(job)) { loadModule(job_.module); }

  void pass() {
    files_.watch(filesRead(job_));
    sayProgramChanges();
    const Stopwatch stopwatch;
    try {
      runRenderJob(job_);
      note("rendered " + onOneLine(job_.output) + " (" +
           std::to_string(std::lround(stopwatch.milliseconds())) + " ms)");
    } catch (const Failure& failure) {
      const bool isHopeless =
          failure.status == ExitStatus::Usage || failure.status == ExitStatus::NoDevice;
      if (isFirst_ && isHopeless) throw;
      say(failure.what());
    }
    // One that came when all frames were complete already has not ended the process.
    if (const int signal = Interruption::signal()) endInterrupted(signal);
    isFirst_ = false;
    job_.misfit = [](const Failure& failure) { say(std::string(failure.what()) + "; left out"); };
  }

  // Signals have their usual effect meanwhile.
  void waitForChange() {
    for (int looks = 1;; ++looks) {
      const Stopwatch stopwatch;
      if (looks % kLooksUntilListed == 0) files_.expect(filesRead(job_));
      if (files_.look()) return;
      const double pause = std::max(kLookEveryMs, kLookShare * stopwatch.milliseconds());
      std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(pause));
    }
  }

 private:
  void sayProgramChanges() {
    try {
      Program program = readProgram(pathOf(job_.program));
      if (program_) {
        for (const std::string& line : programChanges(*program_, program))
          note(line);
      }
      program_ = std::move(program);
    } catch (const Failure&) {
      // The pass meets it again.
    }
  }

  RenderJob job_;
  FileWatch files_;
  std::optional<Program> program_;  // as it was last announced
  bool isFirst_ = true;
};

}  // namespace

void watchRenderJob(RenderJob job) {
  std::optional<Watcher> watcher;
  try {
    watcher.emplace(job);
  } catch (const Failure& failure) {
    tellFailure(job, failure);
    throw;
  }
  while (true) {
    watcher->pass();
    watcher->waitForChange();
  }
}

}  // namespace vellumtide::cli
