// One program on one effect instance, driven through the module as a compositing host drives it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/program/program_file.h"
#include "cli/session/host_session.h"

namespace vellumtide::cli {

// The picture of one layer for one frame.
struct LayerPicture {
  headless::World pixels;
  PF_RationalScale pixelAspect{1, 1};
  std::string file;  // where it came from, "" for none
};

class RenderSession : public HostSession {
 public:
  // Makes a layer for each picture (the first is the effect's own, the others go to the layer
  // controls) and applies the effect, which takes the program's path from the layer's first
  // marker. Throws Failure as HostSession does, and when the program does not load or build.
  RenderSession(const std::string& modulePath, const std::string& programPath,
                const Program& program, std::vector<LayerPicture> pictures);

  headless::Effect& effect() { return *effect_; }
  headless::Composition& composition() { return *composition_; }

  // New pictures for the layers, as many as before.
  void setPictures(std::vector<LayerPicture> pictures);

 private:
  std::vector<headless::Layer*> layers_;
  headless::Composition* composition_ = nullptr;
  headless::Effect* effect_ = nullptr;
};

}  // namespace vellumtide::cli
