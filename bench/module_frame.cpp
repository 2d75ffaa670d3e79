#include "bench/module_frame.h"

#include <fstream>
#include <stdexcept>

namespace vellumtide::bench {

using namespace headless;

namespace {

HostOptions quickHost() {
  HostOptions options;
  options.checkGuardsEveryCall = false;
  options.checkInputPixels = false;
  return options;
}

}  // namespace

ModuleSession::ModuleSession()
    : host(Module::load(defaultModulePath()), quickHost()), comp_(host.addComposition("comp")) {
  if (host.globalSetup() != PF_Err_NONE) throw std::runtime_error("global set-up failed");
}

ModuleSession::~ModuleSession() {
  host.finish();
}

Effect& ModuleSession::load(const std::string& fileName, const std::string& text,
                            const World& picture, double* seconds) {
  const std::string path = folder_.path(fileName);
  std::ofstream(path, std::ios::binary) << text;
  Layer& layer = comp_.addLayer("layer", picture);
  layer.addMarker(path);
  Effect& effect = host.newInstance(layer);
  if (seconds) *seconds = host.lastCall().seconds;
  host.updateParamsUi(effect);
  if (effect.title.find("Invalid") != std::string::npos) {
    throw std::runtime_error("the program is not usable: " + fileName);
  }
  return effect;
}

double ModuleSession::frame(Effect& effect, World& output) {
  const RenderOptions options{.format = output.format(), .output = &output};
  const RenderResult result = host.render(effect, options);
  if (result.error != PF_Err_NONE || result.output) throw std::runtime_error("a frame failed");
  return result.preRenderSeconds + result.renderSeconds;
}

World benchPicture(int width, int height, PF_PixelFormat format) {
  World world(width, height, PF_PixelFormat_ARGB32);
  for (int y = 0; y < height; ++y) {
    for (int i = 0; i < width * 4; ++i)
      world.row(y)[i] = static_cast<uint8_t>(i * 7 + y * 13);
  }
  return convertWorld(world, format);
}

}  // namespace vellumtide::bench
