// One program on one effect instance, driven through the module as a compositing host drives it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/program_file.h"
#include "cli/scratch_folder.h"
#include "headless/host.h"

namespace vellumtide::cli {

// The picture of one layer for one frame.
struct LayerPicture {
  headless::World pixels;
  PF_RationalScale pixelAspect{1, 1};
};

class RenderSession {
 public:
  // Sets the module up, makes a layer for each picture (the first is the effect's own, the others
  // go to the layer controls) and applies the effect, which takes the program's path from the
  // layer's first marker. Throws Failure: ExitStatus::NoDevice without a usable GL device,
  // ExitStatus::Program with the driver's log when the program does not load or build.
  RenderSession(std::shared_ptr<headless::Module> module, const std::string& programPath,
                const Program& program, std::vector<LayerPicture> pictures);
  ~RenderSession();

  headless::Effect& effect() { return *effect_; }

  // New pictures for the layers, as many as before.
  void setPictures(std::vector<LayerPicture> pictures);

  // One frame. Throws Failure (ExitStatus::Failed) when the module answers with an error.
  std::shared_ptr<headless::World> render(const headless::RenderOptions& options);

  // What the module did wrong so far, a line each; "" for nothing. Sets the module down.
  std::string finish();

 private:
  void checkDevice();
  void checkProgram(const std::string& programPath);

  ScratchFolder folder_;  // for what the module keeps between runs
  std::unique_ptr<headless::Host> host_;
  std::vector<headless::Layer*> layers_;
  headless::Effect* effect_ = nullptr;
};

}  // namespace vellumtide::cli
