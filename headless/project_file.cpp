// Projects as JSON text. Sequence data is written in hexadecimal digits.
#include <charconv>
#include <stdexcept>

#include "headless/json_file.h"
#include "headless/project.h"

namespace vellumtide::headless {
namespace {

using nlohmann::json;

constexpr int kFormat = 1;

std::string toHex(const std::vector<uint8_t>& bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

std::vector<uint8_t> fromHex(const std::string& text) {
  std::vector<uint8_t> bytes(text.size() / 2);
  for (size_t i = 0; i < bytes.size(); ++i) {
    const char* pair = text.data() + 2 * i;
    const auto [end, error] = std::from_chars(pair, pair + 2, bytes[i], 16);
    if (error != std::errc() || end != pair + 2) throw std::runtime_error("broken sequence data");
  }
  if (text.size() % 2 != 0) throw std::runtime_error("broken sequence data");
  return bytes;
}

json toJson(const ProjectLayer& layer) {
  return {
      {"id", layer.id},          {"name", layer.name},
      {"file", layer.file},      {"width", layer.width},
      {"height", layer.height},  {"pixelAspect", {layer.pixelAspect.num, layer.pixelAspect.den}},
      {"markers", layer.markers}};
}

ProjectLayer layerOf(const json& record) {
  ProjectLayer layer{record.at("id"),
                     record.at("name"),
                     record.value("file", ""),
                     record.value("width", 0),
                     record.value("height", 0),
                     {1, 1},
                     record.value("markers", std::vector<std::string>())};
  if (record.contains("pixelAspect")) {
    layer.pixelAspect = {record["pixelAspect"].at(0), record["pixelAspect"].at(1)};
    if (layer.pixelAspect.num <= 0 || layer.pixelAspect.den == 0) {
      throw std::runtime_error("a pixel aspect that is not above 0");
    }
  }
  return layer;
}

json toJson(const ProjectInstance& instance) {
  json controls = json::array();
  for (const ProjectControl& control : instance.controls) {
    controls.push_back(
        {{"index", control.index}, {"type", control.type}, {"value", control.value}});
  }
  return {{"layer", instance.layerId},
          {"program", instance.program},
          {"sequenceData", toHex(instance.sequenceData)},
          {"controls", std::move(controls)}};
}

ProjectInstance instanceOf(const json& record) {
  ProjectInstance instance{record.at("layer"),
                           record.value("program", ""),
                           fromHex(record.value("sequenceData", "")),
                           {}};
  if (!record.contains("controls")) return instance;
  for (const auto& control : record["controls"]) {
    instance.controls.push_back({control.at("index"), control.at("type"), control.at("value")});
  }
  return instance;
}

}  // namespace

Project Project::read(const std::string& file) {
  const std::optional<json> content = readJsonFile(file);
  if (!content) throw std::runtime_error("there is no project " + file);
  try {
    if (content->at("format") != kFormat) throw std::runtime_error("an unknown format");
    Project project;
    project.composition = content->at("composition");
    for (const json& layer : content->at("layers"))
      project.layers.push_back(layerOf(layer));
    for (const json& instance : content->at("instances")) {
      project.instances.push_back(instanceOf(instance));
    }
    return project;
  } catch (const std::exception& error) {
    throw std::runtime_error(file + " is not a project: " + error.what());
  }
}

std::string Project::text() const {
  json content{{"format", kFormat},
               {"composition", composition},
               {"layers", json::array()},
               {"instances", json::array()}};
  for (const ProjectLayer& layer : layers)
    content["layers"].push_back(toJson(layer));
  for (const ProjectInstance& instance : instances) {
    content["instances"].push_back(toJson(instance));
  }
  return jsonText(content);
}

}  // namespace vellumtide::headless
