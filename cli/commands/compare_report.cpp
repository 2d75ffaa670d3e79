#include "cli/commands/compare_report.h"

#include <cmath>
#include <cstdio>

namespace vellumtide::cli {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kChannels[] = {"red", "green", "blue", "alpha"};

std::string text(double value, const char* format = "%.6g") {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, format, value);
  return buffer;
}

// Steps are said beside the value where both files keep 8 bits.
bool showsSteps(const Comparison& c) {
  return c.options.white == 255;
}

std::string withSteps(const Comparison& c, double value, const char* unit) {
  if (!showsSteps(c) || !std::isfinite(value)) return text(value);
  return text(value) + " (" + text(value * 255, "%.4g") + unit + ")";
}

std::string sideText(const Comparison::Side& side) {
  return std::to_string(side.width) + " x " + std::to_string(side.height) + ", " +
         std::string(name(side.sampleType));
}

std::string placeText(const ImageDifference& d) {
  return "at " + std::to_string(d.x) + "," + std::to_string(d.y) + " in " + kChannels[d.channel];
}

std::string differingText(const Comparison& c) {
  const ImageDifference& d = c.difference;
  std::string result = std::to_string(d.differing) + " of " + std::to_string(d.pixels) + " pixels";
  if (d.differing > 0) result += " (" + text(100 * d.share(), "%.3g") + " %)";
  if (c.options.tolerance > 0) result += ", by more than " + text(c.options.tolerance);
  if (d.unbounded > 0) result += "; " + std::to_string(d.unbounded) + " of them in NaN or infinity";
  return result;
}

std::string notFiniteText(const Comparison& c) {
  const std::uint64_t count = c.difference.notFinite;
  return std::to_string(count) + (count == 1 ? " pixel holds" : " pixels hold") +
         " NaN or infinity; mean and RMS leave those samples out";
}

std::string line(const std::string& label, const std::string& value, std::size_t width) {
  return label + std::string(width - std::min(width, label.size()) + 2, ' ') + value + "\n";
}

}  // namespace

std::string comparisonText(const Comparison& c) {
  const ImageDifference& d = c.difference;
  const std::size_t width =
      std::max({c.a.file.size(), c.b.file.size(), std::string("largest difference").size()});
  std::string result = line(c.a.file, sideText(c.a), width) + line(c.b.file, sideText(c.b), width);
  if (!c.sameSize()) return result;
  const std::string largest = d.largest == 0
                                  ? "none"
                                  : withSteps(c, d.largest, " of 255") + " " + placeText(d) + ": " +
                                        withSteps(c, d.a, "") + " and " + withSteps(c, d.b, "");
  return result + line("largest difference", largest, width) +
         line("mean difference", withSteps(c, d.mean, " of 255"), width) +
         line("RMS difference", withSteps(c, d.rms, " of 255"), width) +
         line("PSNR", d.rms == 0 ? "infinite" : text(d.psnr(), "%.2f") + " dB", width) +
         line("differing", differingText(c), width) +
         (d.notFinite == 0 ? "" : line("not finite", notFiniteText(c), width));
}

std::string comparisonLine(const Comparison& c) {
  if (!c.sameSize()) {
    return "differ in size: " + sideText(c.a) + " and " + sideText(c.b);
  }
  const ImageDifference& d = c.difference;
  if (d.largest == 0) return "are equal";
  if (d.differing == 0) {
    return "are equal within the tolerance, the largest difference (" + text(d.largest) + ") is " +
           placeText(d);
  }
  return "differ in " + differingText(c) + "; the largest difference (" + text(d.largest) +
         ") is " + placeText(d);
}

nlohmann::ordered_json comparisonJson(const Comparison& c) {
  const auto side = [](const Comparison::Side& s) -> Json {
    return {{"file", s.file},
            {"width", s.width},
            {"height", s.height},
            {"sampleType", name(s.sampleType)}};
  };
  Json json;
  if (c.frame) json["frame"] = *c.frame;
  json["a"] = side(c.a);
  json["b"] = side(c.b);
  json["sameSize"] = c.sameSize();
  json["passes"] = c.passes;
  json["tolerance"] = c.options.tolerance;
  if (!c.sameSize()) return json;
  const ImageDifference& d = c.difference;
  json["largest"] = {{"difference", d.largest},         {"x", d.x}, {"y", d.y},
                     {"channel", kChannels[d.channel]}, {"a", d.a}, {"b", d.b}};
  if (d.largest == 0) json["largest"] = nullptr;
  json["mean"] = d.mean;
  json["rms"] = d.rms;
  json["psnr"] = d.psnr();
  json["pixels"] = d.pixels;
  json["differing"] = d.differing;
  json["share"] = d.share();
  json["unbounded"] = d.unbounded;
  json["notFinite"] = d.notFinite;
  return json;
}

}  // namespace vellumtide::cli
