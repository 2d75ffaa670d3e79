// What the module's about box says, driver included.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace vellumtide::cli {

struct AboutBox {
  std::vector<std::string> text;    // of the effect itself
  std::vector<std::string> driver;  // such as "OpenGL vendor  : Name"
};

// Opens the about box of the effect module (see loadModule). Throws Failure as HostSession does.
AboutBox readAboutBox(const std::string& module);

// {"vendor","version","glslVersion"}, those that the box names.
nlohmann::ordered_json driverJson(const AboutBox& box);

}  // namespace vellumtide::cli
