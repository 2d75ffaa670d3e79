// Compositions, layers, source items and markers that a module can reach through the host's suites.
#pragma once

#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "headless/world.h"

namespace vellumtide::headless {

struct Item {
  std::string name;
  A_Ratio pixelAspect{1, 1};
  std::string file;  // where the pixels came from, "" for none; only projects use it
};

struct Marker {
  std::u16string comment;
  A_Time time{0, 1};
};

class Composition;

class Layer {
 public:
  Layer(Composition& comp, AEGP_LayerIDVal id, std::string name, World pixels);

  AEGP_LayerIDVal id() const { return id_; }
  const std::string& name() const { return name_; }
  Composition& composition() const { return *comp_; }

  // Full-resolution pixels. Replacing them keeps the layer's identity.
  const World& pixels() const { return pixels_; }
  void setPixels(World pixels);
  int width() const { return pixels_.width(); }
  int height() const { return pixels_.height(); }
  // The pixels as a render at that format and resolution gets them. The last few that were asked
  // for are kept, so that a frame from within another leaves it its own.
  World& pixelsFor(PF_PixelFormat format, PF_RationalScale downsampleX,
                   PF_RationalScale downsampleY);

  // The source item; a layer without one (a null object) answers with no item.
  std::optional<Item>& item() { return item_; }
  PF_RationalScale pixelAspect() const;

  std::vector<Marker>& markers() { return markers_; }
  // Adds a marker; its comment is UTF-8.
  void addMarker(const std::string& comment, A_Time time = {0, 1});

 private:
  Composition* comp_;
  AEGP_LayerIDVal id_;
  std::string name_;
  World pixels_;
  std::optional<Item> item_;
  std::vector<Marker> markers_;

  struct Derived {
    PF_PixelFormat format;
    PF_RationalScale x, y;
    World world;
  };
  std::list<Derived> derived_;  // the newest first
};

class Composition {
 public:
  explicit Composition(std::string name) : name_(std::move(name)) {}
  Composition(const Composition&) = delete;
  Composition& operator=(const Composition&) = delete;

  const std::string& name() const { return name_; }
  // Layers stay where they are; ids count from 1 and are not used again.
  Layer& addLayer(const std::string& name, World pixels);
  // The same with an id of one's own; throws std::invalid_argument when it is 0 or below or taken.
  Layer& addLayer(AEGP_LayerIDVal id, const std::string& name, World pixels);
  Layer* findLayer(AEGP_LayerIDVal id);
  std::list<Layer>& layers() { return layers_; }

 private:
  std::string name_;
  std::list<Layer> layers_;
  AEGP_LayerIDVal nextId_ = 1;
};

}  // namespace vellumtide::headless
