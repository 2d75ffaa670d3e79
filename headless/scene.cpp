#include "headless/scene.h"

#include <algorithm>
#include <stdexcept>

#include "headless/text.h"

namespace vellumtide::headless {
namespace {

bool same(PF_RationalScale a, PF_RationalScale b) {
  return a.num == b.num && a.den == b.den;
}
constexpr std::size_t kDerivedKept = 3;

bool isFull(PF_RationalScale scale) {
  return scale.num == static_cast<A_long>(scale.den);
}

}  // namespace

Layer::Layer(Composition& comp, AEGP_LayerIDVal id, std::string name, World pixels)
    : comp_(&comp), id_(id), name_(std::move(name)), pixels_(std::move(pixels)) {
  item_ = Item{name_, {1, 1}, ""};
}

void Layer::setPixels(World pixels) {
  pixels_ = std::move(pixels);
  derived_.clear();
}

World& Layer::pixelsFor(PF_PixelFormat format, PF_RationalScale downsampleX,
                        PF_RationalScale downsampleY) {
  const bool full = isFull(downsampleX) && isFull(downsampleY);
  if (full && format == pixels_.format()) return pixels_;
  for (Derived& known : derived_) {
    if (known.format == format && same(known.x, downsampleX) && same(known.y, downsampleY)) {
      return known.world;
    }
  }
  World world = full ? convertWorld(pixels_, format)
                     : downsampleWorld(convertWorld(pixels_, format), downsampleX, downsampleY);
  if (derived_.size() == kDerivedKept) derived_.pop_back();
  derived_.push_front({format, downsampleX, downsampleY, std::move(world)});
  return derived_.front().world;
}

PF_RationalScale Layer::pixelAspect() const {
  if (!item_) return {1, 1};
  return {item_->pixelAspect.num, item_->pixelAspect.den};
}

void Layer::addMarker(const std::string& comment, A_Time time) {
  markers_.push_back({toUtf16(comment), time});
}

Layer& Composition::addLayer(const std::string& name, World pixels) {
  return addLayer(nextId_, name, std::move(pixels));
}

Layer& Composition::addLayer(AEGP_LayerIDVal id, const std::string& name, World pixels) {
  if (id <= 0 || findLayer(id)) {
    throw std::invalid_argument("layer id " + std::to_string(id) + " cannot be used");
  }
  nextId_ = std::max(nextId_, id + 1);
  return layers_.emplace_back(*this, id, name, std::move(pixels));
}

Layer* Composition::findLayer(AEGP_LayerIDVal id) {
  for (Layer& layer : layers_) {
    if (layer.id() == id) return &layer;
  }
  return nullptr;
}

}  // namespace vellumtide::headless
