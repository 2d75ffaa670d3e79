#include "cli/session/render_session.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "cli/text/utf8_path.h"

namespace vellumtide::cli {

RenderSession::RenderSession(const std::string& modulePath, const std::string& programPath,
                             const Program& program, std::vector<LayerPicture> pictures)
    : HostSession(modulePath), composition_(&host().addComposition("composition")) {
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    layers_.push_back(&composition_->addLayer("layer " + std::to_string(i + 1),
                                              headless::World(1, 1, PF_PixelFormat_ARGB32)));
  }
  setPictures(std::move(pictures));
  // An absolute path is never too short for a marker to be taken as one.
  const std::string path = utf8(std::filesystem::absolute(pathOf(programPath)));
  layers_.front()->addMarker(path);
  effect_ = &host().newInstance(*layers_.front());
  effect_->program = path;
  host().updateParamsUi(*effect_);
  requireUsable(*effect_, programPath, &program);

  const std::size_t inputs = std::min(program.inputs().size(), layers_.size());
  for (std::size_t i = 1; i < inputs; ++i) {
    effect_->setLayer(slotsOf(program).inputs[i], layers_[i]);
  }
}

void RenderSession::setPictures(std::vector<LayerPicture> pictures) {
  for (std::size_t i = 0; i < layers_.size() && i < pictures.size(); ++i) {
    LayerPicture& picture = pictures[i];
    layers_[i]->setPixels(std::move(picture.pixels));
    layers_[i]->item()->pixelAspect = {picture.pixelAspect.num, picture.pixelAspect.den};
    layers_[i]->item()->file = std::move(picture.file);
  }
}

}  // namespace vellumtide::cli
