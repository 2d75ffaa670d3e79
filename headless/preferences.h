// The host's persistent data: texts by section and key, kept in a JSON file or in memory only.
#pragma once

#include <map>
#include <optional>
#include <string>

namespace vellumtide::headless {

class Preferences {
 public:
  // Reads the file when it is there; "" keeps everything in memory. Throws std::runtime_error when
  // the file is there and is not a store.
  explicit Preferences(std::string file = "");

  std::optional<std::string> get(const std::string& section, const std::string& key) const;
  // Writes the file whole, or not at all; throws std::runtime_error when it cannot be written.
  void set(const std::string& section, const std::string& key, const std::string& value);

 private:
  std::string file_;
  std::map<std::string, std::map<std::string, std::string>> sections_;
};

}  // namespace vellumtide::headless
