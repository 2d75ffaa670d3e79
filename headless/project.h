// A project on disk, in JSON: a composition's layers and the effect instances on them, each with
// its flattened sequence data and the values of its controls.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "headless/host.h"

namespace vellumtide::headless {

struct ProjectLayer {
  AEGP_LayerIDVal id = 0;
  std::string name;
  std::string file;  // where the pixels come from, as the caller understands it
  int width = 0, height = 0;
  A_Ratio pixelAspect{1, 1};
  std::vector<std::string> markers;  // comments, UTF-8
};

struct ProjectControl {
  PF_ParamIndex index = 0;
  PF_ParamType type = PF_Param_LAYER;
  std::vector<double> value;  // one number, x and y, red to alpha, or a layer's id
};

struct ProjectInstance {
  AEGP_LayerIDVal layerId = 0;
  std::string program;
  std::vector<uint8_t> sequenceData;  // flattened; empty makes a fresh instance
  std::vector<ProjectControl> controls;
};

struct Project {
  std::string composition;
  std::vector<ProjectLayer> layers;
  std::vector<ProjectInstance> instances;

  // Throws std::runtime_error naming the file.
  static Project read(const std::string& file);
  // What such a file holds.
  std::string text() const;

  // What is in a host now; each instance is flattened and set up again.
  static Project capture(Host& host, Composition& composition);

  // Makes the composition and its instances in a host whose module is set up. `pixels` gives a
  // layer's pixels. Throws std::runtime_error when something refers to a layer or control there is
  // none of; what was made until then stays.
  std::vector<Effect*> open(Host& host,
                            const std::function<World(const ProjectLayer&)>& pixels) const;
};

}  // namespace vellumtide::headless
