// A sequence of PNG pictures through a kernel: the whole job against each of its stages alone, in
// one run, and the memory it takes for a few and for many frames.
//   bench_sequence [FRAMES [WIDTHxHEIGHT [THREADS [KERNEL]]]]       default: 200 1920x1080 1
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "bench/run_program.h"
#include "cli/files/scratch_folder.h"
#include "cli/os/stopwatch.h"
#include "cli/session/layer_pictures.h"

namespace {

using namespace vellumtide;
namespace fs = std::filesystem;

const std::string kProgram = VELLUMTIDE_EXECUTABLE;
const std::string kKernels = VELLUMTIDE_EXAMPLES "/kernels/";

struct Setting {
  int frames = 200;
  std::string size = "1920x1080", threads = "1", kernel = kKernels + "color_grade.pbk";
};

fs::path numbered(const fs::path& folder, const char* stem, int frame) {
  char name[64];
  std::snprintf(name, sizeof name, "%s.%04d.png", stem, frame);
  return folder / name;
}

bench::ProgramRun render(const Setting& setting, const fs::path& folder, int frames) {
  const bench::ProgramRun run = bench::runProgram(
      {kProgram, "render", setting.kernel, "-i", (folder / "in.####.png").string(), "-o",
       (folder / "out.####.png").string(), "--frames", "1-" + std::to_string(frames), "--threads",
       setting.threads, "--progress", "none"});
  if (run.status != 0) throw std::runtime_error("the render failed");
  return run;
}

void run(const Setting& setting) {
  const cli::ScratchFolder scratch;
  const fs::path folder = scratch.path();
  const fs::path first = numbered(folder, "in", 1);
  if (bench::runProgram({kProgram, "render", kKernels + "landscape.pbk", "--size", setting.size,
                         "-o", first.string()})
          .status != 0) {
    throw std::runtime_error("the landscape cannot be rendered");
  }
  for (int frame = 2; frame <= setting.frames; ++frame)
    fs::copy_file(first, numbered(folder, "in", frame));

  // Each stage alone, on one thread.
  const cli::Stopwatch readWatch;
  cli::LayerPictures input;
  for (int frame = 1; frame <= setting.frames; ++frame)
    input = cli::readPictures({{numbered(folder, "in", frame)}}, {});
  const double read = readWatch.milliseconds();

  const cli::Program program = cli::readProgram(setting.kernel);
  const headless::World pixels = input.pictures.front().pixels;
  cli::RenderSession session("", setting.kernel, program, std::move(input.pictures));
  std::shared_ptr<headless::World> picture = session.render(session.effect(), {});
  double draw = 0;
  for (int frame = 1; frame <= setting.frames; ++frame) {
    std::vector<cli::LayerPicture> next;
    next.push_back({pixels, {1, 1}, ""});
    const cli::Stopwatch watch;
    session.setPictures(std::move(next));
    picture = session.render(session.effect(), {});
    draw += watch.milliseconds();
  }
  session.finish();

  const cli::Stopwatch writeWatch;
  for (int frame = 1; frame <= setting.frames; ++frame)
    cli::writeImageFile(numbered(folder, "alone", frame), *picture, 1, input.write);
  const double write = writeWatch.milliseconds();

  const int few = std::max(1, setting.frames / 4);
  const bench::ProgramRun small = render(setting, folder, few);
  const bench::ProgramRun whole = render(setting, folder, setting.frames);
  const double slowest = std::max({read, draw, write});
  const double count = setting.frames;
  std::printf("%d frames of %s, 8-bit PNG, %s reading and writing thread(s)\n", setting.frames,
              setting.size.c_str(), setting.threads.c_str());
  std::printf("  read alone    %8.1f ms a frame\n", read / count);
  std::printf("  render alone  %8.1f ms a frame\n", draw / count);
  std::printf("  write alone   %8.1f ms a frame\n", write / count);
  std::printf("  whole job     %8.1f ms a frame, start-up included\n", whole.milliseconds / count);
  std::printf("  whole job / slowest stage alone   %.2f\n", whole.milliseconds / slowest);
  std::printf("  whole job / sum of the stages     %.2f\n",
              whole.milliseconds / (read + draw + write));
  std::printf("  peak memory   %ld MiB for %d frames, %ld MiB for %d\n", small.peakKilobytes / 1024,
              few, whole.peakKilobytes / 1024, setting.frames);
}

}  // namespace

int main(int argc, char** argv) {
  Setting setting;
  if (argc > 1) setting.frames = std::max(1, std::atoi(argv[1]));
  if (argc > 2) setting.size = argv[2];
  if (argc > 3) setting.threads = argv[3];
  if (argc > 4) setting.kernel = argv[4];
  try {
    run(setting);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_sequence: %s\n", error.what());
    return 1;
  }
  return 0;
}
