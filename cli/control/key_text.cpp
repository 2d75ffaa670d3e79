#include "cli/control/key_text.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

#include "cli/text/failure.h"
#include "cli/text/number_text.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

using Json = nlohmann::json;

[[noreturn]] void fail(const std::string& where, const std::string& reason) {
  throw Failure(ExitStatus::Usage, where + ": " + reason);
}

// Of two members of one name a JSON object would silently keep the last.
class DuplicateFinder {
 public:
  bool operator()(int, Json::parse_event_t event, const Json& parsed) {
    if (event == Json::parse_event_t::object_start) names_.emplace_back();
    if (event == Json::parse_event_t::object_end) names_.pop_back();
    if (event == Json::parse_event_t::key && !names_.back().insert(parsed).second) {
      throw Failure(ExitStatus::Usage, "\"" + parsed.get<std::string>() + "\" is there twice");
    }
    return true;
  }

 private:
  std::vector<std::set<std::string>> names_;
};

Json readJson(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file || file.peek() == std::ifstream::traits_type::eof()) {
    fail(utf8(path), "cannot be read, or is empty");
  }
  try {
    DuplicateFinder duplicates;
    return Json::parse(file, std::ref(duplicates));
  } catch (const Json::exception& wrong) {
    const std::string reason = wrong.what();
    fail(utf8(path), "is not JSON: " + reason.substr(reason.find("] ") + 2));
  } catch (const Failure& duplicate) {
    fail(utf8(path), duplicate.what());
  }
}

std::optional<std::string> scalarText(const Json& value) {
  if (value.is_boolean() || value.is_number()) return value.dump();
  return {};
}

// The value as it would be typed.
std::string valueText(const Json& value, const std::string& where) {
  if (value.is_string()) return value;
  if (const std::optional<std::string> text = scalarText(value)) return *text;
  std::string list;
  if (value.is_array() && !value.empty()) {
    for (const Json& part : value) {
      const std::optional<std::string> text = scalarText(part);
      if (!text) fail(where, "expected a list of numbers or of true and false");
      list += (list.empty() ? "" : ",") + *text;
    }
    return list;
  }
  fail(where, "expected a value: a number, true or false, a text or a list of numbers");
}

KeyTime timeOf(const Json& key, const std::string& where) {
  const bool inSeconds = key.contains("time");
  if (inSeconds == key.contains("frame")) fail(where, "expected either \"frame\" or \"time\"");
  const Json& time = key[inSeconds ? "time" : "frame"];
  if (!time.is_number()) {
    fail(where,
         inSeconds ? "expected a number of seconds as \"time\"" : "expected a number as \"frame\"");
  }
  return {time, inSeconds};
}

KeyText keyOf(const Json& key, const std::string& control, const std::string& where) {
  if (!key.is_object()) fail(where, "expected an object with \"frame\" or \"time\" and \"value\"");
  for (const auto& [name, ignored] : key.items()) {
    if (name != "frame" && name != "time" && name != "value" && name != "interpolation") {
      fail(where, "there is no member \"" + name +
                      "\"; a key has \"frame\" or \"time\", \"value\" and \"interpolation\"");
    }
  }
  if (!key.contains("value")) fail(where, "expected a \"value\"");
  KeyText text{where, control, timeOf(key, where), {}, valueText(key["value"], where)};
  if (key.contains("interpolation")) {
    const Json& word = key["interpolation"];
    if (word.is_string()) text.interpolation = parseInterpolation(word.get<std::string>());
    if (!text.interpolation) fail(where, "expected \"linear\" or \"hold\" as \"interpolation\"");
  }
  return text;
}

bool isListOfKeys(const Json& value) {
  return value.is_array() && (value.empty() || value.front().is_object());
}

}  // namespace

std::optional<KeyTime> parseKeyTime(std::string_view text) {
  const bool inSeconds = text.ends_with('s');
  if (inSeconds) text.remove_suffix(1);
  const std::optional<double> value = parseNumber(text);
  if (!value) return {};
  return KeyTime{*value, inSeconds};
}

std::optional<Interpolation> parseInterpolation(std::string_view text) {
  if (text == "linear") return Interpolation::Linear;
  if (text == "hold") return Interpolation::Hold;
  return {};
}

std::vector<KeyText> readKeyFile(const std::filesystem::path& file) {
  const Json all = readJson(file);
  if (!all.is_object()) fail(utf8(file), "expected an object with a member for each control");
  std::vector<KeyText> keys;
  for (const auto& [control, value] : all.items()) {
    const std::string where = utf8(file) + ": \"" + control + "\"";
    if (!isListOfKeys(value)) {
      keys.push_back({where, control, {}, {}, valueText(value, where)});
      continue;
    }
    if (value.empty()) fail(where, "expected at least one key");
    for (std::size_t i = 0; i < value.size(); ++i)
      keys.push_back(keyOf(value[i], control, where + " key " + std::to_string(i + 1)));
  }
  return keys;
}

}  // namespace vellumtide::cli
