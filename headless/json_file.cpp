#include "headless/json_file.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace vellumtide::headless {
namespace {

std::filesystem::path pathOf(const std::string& text) {
  return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

}  // namespace

std::optional<nlohmann::json> readJsonFile(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::exists(pathOf(path), error)) {
    if (error) throw std::runtime_error("cannot read " + path + ": " + error.message());
    return std::nullopt;
  }
  if (!std::filesystem::is_regular_file(pathOf(path), error)) {
    throw std::runtime_error(path + " is a folder, a pipe or a device");
  }
  std::ifstream file(pathOf(path), std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  try {
    return nlohmann::json::parse(file);
  } catch (const nlohmann::json::exception& wrong) {
    throw std::runtime_error(path + " is not JSON: " + wrong.what());
  }
}

std::string jsonText(const nlohmann::json& json) {
  return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

void writeJsonFile(const std::string& path, const nlohmann::json& json) {
  const std::filesystem::path target = pathOf(path);
  std::filesystem::path temporary = target;
  temporary += ".part";
  std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
  file << jsonText(json);
  file.close();
  std::error_code error;
  if (file) std::filesystem::rename(temporary, target, error);
  if (!file || error) {
    std::filesystem::remove(temporary, error);
    throw std::runtime_error("cannot write " + path);
  }
}

}  // namespace vellumtide::headless
