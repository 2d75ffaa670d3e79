// Reading a JSON file, writing one whole or not at all. Internal to this folder.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace vellumtide::headless {

// Nothing when there is no such file; throws std::runtime_error when it is there and no JSON.
std::optional<nlohmann::json> readJsonFile(const std::string& path);
// As the files hold it: indented, with broken bytes replaced in texts that are not UTF-8.
std::string jsonText(const nlohmann::json& json);
// Writes a temporary file beside `path`, then renames it. Throws std::runtime_error.
void writeJsonFile(const std::string& path, const nlohmann::json& json);

}  // namespace vellumtide::headless
