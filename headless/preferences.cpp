#include "headless/preferences.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "headless/json_file.h"

namespace vellumtide::headless {

Preferences::Preferences(std::string file) : file_(std::move(file)) {
  if (file_.empty()) return;
  const std::optional<nlohmann::json> json = readJsonFile(file_);
  if (!json) return;
  try {
    sections_ = json->get<decltype(sections_)>();
  } catch (const nlohmann::json::exception& error) {
    throw std::runtime_error(file_ + " is not a preferences file: " + error.what());
  }
}

std::optional<std::string> Preferences::get(const std::string& section,
                                            const std::string& key) const {
  const auto found = sections_.find(section);
  if (found == sections_.end()) return std::nullopt;
  const auto value = found->second.find(key);
  if (value == found->second.end()) return std::nullopt;
  return value->second;
}

void Preferences::set(const std::string& section, const std::string& key,
                      const std::string& value) {
  sections_[section][key] = value;
  if (!file_.empty()) writeJsonFile(file_, sections_);
}

}  // namespace vellumtide::headless
