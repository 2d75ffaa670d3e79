// Keys of an animation as people write them, before they meet a panel.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumtide::cli {

enum class Interpolation { Linear, Hold };

struct KeyTime {
  double value = 0;
  bool inSeconds = false;  // else in frames
};

struct KeyText {
  std::string where;    // for messages: the option, or the file with the control and the key
  std::string control;  // its name
  std::optional<KeyTime> time;                 // none: a constant
  std::optional<Interpolation> interpolation;  // none: what is usual for the control
  std::string value;                           // as ControlPanel::parse takes it
};

// "12", "-3.5" (frames) or "0.5s" (seconds).
std::optional<KeyTime> parseKeyTime(std::string_view text);
// "linear" or "hold".
std::optional<Interpolation> parseInterpolation(std::string_view text);

// Reads a JSON file: an object that gives each control, by its name, a constant or a list of keys
//   {"frame": N or "time": SECONDS, "value": V, "interpolation": "linear" or "hold"}
// where V is a number, true or false, a text as on the command line, or a list of numbers or
// booleans. Throws Failure (ExitStatus::Usage) that names the file, the control and the key.
std::vector<KeyText> readKeyFile(const std::filesystem::path& file);

}  // namespace vellumtide::cli
