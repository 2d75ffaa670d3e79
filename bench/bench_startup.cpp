// What a short command costs: `inspect` of a kernel, and `render` of one small picture against a
// process that makes and destroys a GL context and does nothing else. Runs alternate.
//   bench_startup [ROUNDS]
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "bench/run_program.h"
#include "cli/files/scratch_folder.h"
#include "cli/image/image_file.h"
#include "headless/host_gl_context.h"

namespace {

using namespace vellumtide;

int bareContext() {
  headless::HostGlContext context;
  if (!context.usable()) return 1;
  context.makeCurrent();
  context.release();
  return 0;
}

double timed(const std::vector<std::string>& arguments) {
  const bench::ProgramRun run = bench::runProgram(arguments);
  if (run.status != 0) throw std::runtime_error(arguments[0] + " " + arguments[1] + " failed");
  return run.milliseconds;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && std::strcmp(argv[1], "--bare-context") == 0) return bareContext();
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 31;
  const cli::ScratchFolder folder;
  const std::string in = (folder.path() / "in.png").string();
  const std::string out = (folder.path() / "out.png").string();
  const std::string program = VELLUMTIDE_EXECUTABLE;
  const std::string kernel = VELLUMTIDE_EXAMPLES "/kernels/color_grade.pbk";
  cli::writeImageFile(in, headless::World(64, 64, PF_PixelFormat_ARGB32), 1, {});

  std::vector<double> bare, inspect, render, ratio;
  for (int i = 0; i < rounds; ++i) {
    bare.push_back(timed({argv[0], "--bare-context"}));
    inspect.push_back(timed({program, "inspect", kernel}));
    render.push_back(timed({program, "render", kernel, "-i", in, "-o", out}));
    ratio.push_back(render.back() / bare.back());
  }
  std::printf("medians of %d rounds\n", rounds);
  std::printf("  bare GL context made and destroyed   %7.1f ms\n", bench::median(bare));
  std::printf("  inspect of a kernel                  %7.1f ms\n", bench::median(inspect));
  std::printf("  render of one 64 x 64 picture        %7.1f ms\n", bench::median(render));
  std::printf("  render / bare context                %7.2f\n", bench::median(ratio));
  return 0;
}
