#include "cli/session/about_box.h"

#include <nlohmann/json.hpp>
#include <optional>

#include "cli/session/host_session.h"

namespace vellumtide::cli {

AboutBox readAboutBox(const std::string& module) {
  HostSession session(module);
  headless::Host& host = session.host();
  host.infoPanel().clear();
  host.about();
  AboutBox box;
  for (const headless::DialogRecord& dialog : host.scripts().dialogs()) {
    for (const headless::DrawnItem& item : dialog.drawn) {
      if (item.kind == "text") box.text.push_back(item.text);
    }
  }
  // The box draws the three lines of the driver first, the export of the log others after it.
  if (!host.infoPanel().empty()) {
    for (const std::optional<std::string>& line : host.infoPanel().front().lines) {
      if (line) box.driver.push_back(*line);
    }
  }
  session.finish();
  return box;
}

nlohmann::ordered_json driverJson(const AboutBox& box) {
  constexpr std::pair<const char*, const char*> kKeys[] = {
      {"OpenGL vendor", "vendor"}, {"OpenGL version", "version"}, {"GLSL", "glslVersion"}};
  nlohmann::ordered_json json = nlohmann::ordered_json::object();
  for (const std::string& line : box.driver) {
    const std::size_t colon = line.find(": ");
    for (const auto& [start, key] : kKeys) {
      if (colon != std::string::npos && line.starts_with(start)) json[key] = line.substr(colon + 2);
    }
  }
  return json;
}

}  // namespace vellumtide::cli
