#include "headless/project.h"

#include <stdexcept>

#include "headless/text.h"

namespace vellumtide::headless {
namespace {

std::vector<double> valueOf(const Control& control) {
  const ColorValue& color = control.color;
  switch (control.type) {
    case PF_Param_POINT:
      return {control.point.x, control.point.y};
    case PF_Param_LAYER:
      return {static_cast<double>(control.layerId)};
    case PF_Param_COLOR:
      return {color.red, color.green, color.blue, color.alpha};
    default:
      return {control.number};
  }
}

size_t valueCount(PF_ParamType type) {
  return type == PF_Param_COLOR ? 4 : type == PF_Param_POINT ? 2 : 1;
}

void setControl(Effect& effect, const ProjectControl& record) {
  const std::string name = "control " + std::to_string(record.index);
  if (record.index <= 0 || static_cast<size_t>(record.index) >= effect.controls().size()) {
    throw std::runtime_error("there is no " + name);
  }
  const std::vector<double>& value = record.value;
  if (effect.control(record.index).type != record.type || value.size() != valueCount(record.type)) {
    throw std::runtime_error(name + " is of another type");
  }
  switch (record.type) {
    case PF_Param_POINT:
      effect.setPoint(record.index, value[0], value[1]);
      break;
    case PF_Param_COLOR:
      effect.setColor(record.index, {value[0], value[1], value[2], value[3]});
      break;
    case PF_Param_LAYER: {
      const Layer* chosen = nullptr;
      for (const Layer& layer : effect.layer().composition().layers()) {
        if (layer.id() == value[0]) chosen = &layer;
      }
      if (!chosen && value[0] != 0) {
        throw std::runtime_error(name + " refers to a layer that there is not");
      }
      effect.setLayer(record.index, chosen);
      break;
    }
    default:
      effect.setNumber(record.index, value[0]);
      break;
  }
}

}  // namespace

Project Project::capture(Host& host, Composition& composition) {
  Project project;
  project.composition = composition.name();
  for (Layer& layer : composition.layers()) {
    const PF_RationalScale aspect = layer.pixelAspect();
    ProjectLayer record{layer.id(),
                        layer.name(),
                        layer.item() ? layer.item()->file : "",
                        layer.width(),
                        layer.height(),
                        {aspect.num, aspect.den},
                        {}};
    for (const Marker& marker : layer.markers())
      record.markers.push_back(toUtf8(marker.comment));
    project.layers.push_back(std::move(record));
  }
  for (Effect& effect : host.effects()) {
    if (&effect.layer().composition() != &composition) continue;
    ProjectInstance record{effect.layer().id(), effect.program, host.save(effect), {}};
    for (const Control& control : effect.controls()) {
      if (control.index > 0) {
        record.controls.push_back({control.index, control.type, valueOf(control)});
      }
    }
    project.instances.push_back(std::move(record));
  }
  return project;
}

std::vector<Effect*> Project::open(Host& host,
                                   const std::function<World(const ProjectLayer&)>& pixels) const {
  Composition& comp = host.addComposition(composition);
  for (const ProjectLayer& record : layers) {
    if (comp.findLayer(record.id) || record.id <= 0) {
      throw std::runtime_error("two layers have the id " + std::to_string(record.id) +
                               ", or it is not above 0");
    }
    Layer& layer = comp.addLayer(record.id, record.name, pixels(record));
    layer.item() = Item{record.name, record.pixelAspect, record.file};
    for (const std::string& marker : record.markers)
      layer.addMarker(marker);
  }
  std::vector<Effect*> opened;
  for (const ProjectInstance& record : instances) {
    Layer* layer = comp.findLayer(record.layerId);
    if (!layer) {
      throw std::runtime_error("an instance is on layer " + std::to_string(record.layerId) +
                               ", which there is not");
    }
    Effect& effect = record.sequenceData.empty() ? host.newInstance(*layer)
                                                 : host.openInstance(*layer, record.sequenceData);
    effect.program = record.program;
    for (const ProjectControl& control : record.controls)
      setControl(effect, control);
    opened.push_back(&effect);
  }
  return opened;
}

}  // namespace vellumtide::headless
