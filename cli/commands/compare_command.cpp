#include <cmath>
#include <cstdio>
#include <memory>

#include "cli/commands/commands.h"
#include "cli/commands/compare_report.h"
#include "cli/files/file_guard.h"
#include "cli/files/output_target.h"
#include "cli/sequence/frame_sequence.h"
#include "cli/text/failure.h"
#include "cli/text/messages.h"
#include "cli/text/number_text.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {
namespace {

namespace fs = std::filesystem;

struct CompareOptions {
  std::string a, b, output, frames;
  std::string tolerance = "0", allow = "0", amplify = "1";
  DifferenceOptions difference;
  bool json = false;
};

// A number, or "A/B" for steps of an integer range.
double parseTolerance(const std::string& text) {
  const std::size_t bar = text.find('/');
  const double over = bar == std::string::npos ? 1 : parseNumber(text.substr(bar + 1)).value_or(0);
  const double value = parseNumber(text.substr(0, bar)).value_or(-1);
  if (value < 0 || over <= 0) {
    failUsage("--tolerance " + text + ": expected a number such as 0.004 or 1/255");
  }
  return value / over;
}

// How many pixels may differ: a number of them, or a share in percent.
struct Allowance {
  explicit Allowance(std::string text) : isShare(!text.empty() && text.back() == '%') {
    if (isShare) text.pop_back();
    const std::optional<double> number = parseNumber(text);
    if (!number || *number < 0)
      failUsage("--allow " + text + (isShare ? "%" : "") + ": expected 20 or 0.5%");
    if (isShare && *number > 100) failUsage("--allow " + text + "%: a share is at most 100%");
    most = *number;
  }
  bool holds(const ImageDifference& d) const {
    return (isShare ? 100 * d.share() : static_cast<double>(d.differing)) <= most;
  }

  double most = 0;
  bool isShare;
};

// 0: as much as makes the largest difference white.
double parseGain(const std::string& text) {
  if (text == "auto") return 0;
  const std::optional<double> gain = parseNumber(text);
  if (!gain || *gain <= 0) failUsage("--amplify " + text + ": expected a positive number or auto");
  return *gain;
}

class Comparer {
 public:
  explicit Comparer(const CompareOptions& options)
      : allow_(options.allow), gain_(parseGain(options.amplify)) {
    difference_ = options.difference;
    difference_.tolerance = parseTolerance(options.tolerance);
  }

  Comparison compare(const fs::path& a, const fs::path& b, const fs::path& output) const {
    if (!output.empty()) checkWritable(output, {});
    const ImageFile one = readImageFile(a, ReadAs::Floats);
    const ImageFile two = readImageFile(b, ReadAs::Floats);
    Comparison result{sideOf(a, one), sideOf(b, two), {}, difference_, {}, false};
    if (!result.sameSize()) return result;
    result.options.white = commonWhite(one.sampleType, two.sampleType);
    result.difference = compareImages(one.pixels, two.pixels, result.options);
    result.passes = allow_.holds(result.difference);
    if (!output.empty()) write(output, one, two, result);
    return result;
  }

 private:
  static Comparison::Side sideOf(const fs::path& path, const ImageFile& image) {
    return {utf8(path), image.pixels.width(), image.pixels.height(), image.sampleType};
  }

  void write(const fs::path& output, const ImageFile& a, const ImageFile& b,
             const Comparison& comparison) const {
    const double largest = comparison.difference.largestFinite;
    const double gain = gain_ > 0 ? gain_ : largest > 0 ? 1 / largest : 1;
    const PF_PixelFormat format =
        comparison.options.white == 255 ? PF_PixelFormat_ARGB32 : PF_PixelFormat_ARGB128;
    WriteOptions opaque;
    opaque.dropAlpha = true;
    writeImageFile(output, differencePicture(a.pixels, b.pixels, comparison.options, gain, format),
                   a.pixelAspect, opaque);
  }

  Allowance allow_;
  double gain_;
  DifferenceOptions difference_;
};

// The pictures of all frames are kept from the files of all, because a later frame reads them.
void requireApart(const CompareOptions& options, const std::vector<int>& frames) {
  if (options.output.empty()) return;
  if (isStandardOutput(pathOf(options.output)))
    failUsage("-o -: standard output tells the figures; name a file for the picture");
  FileGuard guard;
  const auto forEach = [&](const std::string& name, auto action) {
    if (frames.empty()) action(pathOf(name));
    for (int frame : frames)
      action(frameName(pathOf(name), frame));
  };
  for (const std::string& image : {options.a, options.b})
    forEach(image, [&](const fs::path& file) { guard.reads("the image", file); });
  forEach(options.output, [&](const fs::path& file) { guard.writes("-o", file); });
}

void compareTwo(const CompareOptions& options) {
  requireApart(options, {});
  const Comparison result =
      Comparer(options).compare(pathOf(options.a), pathOf(options.b), pathOf(options.output));
  writeOut(options.json ? comparisonJson(result).dump(2) + "\n" : comparisonText(result));
  if (!result.passes) {
    throw Failure(ExitStatus::Failed,
                  options.a + " and " + options.b + " " + comparisonLine(result));
  }
}

// A line for each frame, or one list of objects; the others are compared after one that differs.
void compareFrames(const CompareOptions& options) {
  for (const std::string& pattern : {options.a, options.output}) {
    if (!pattern.empty() && !isNumbered(pathOf(pattern)))
      failUsage("--frames: " + pattern + " has no place for the frame number, such as ####");
  }
  const Comparer comparer(options);
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  const std::vector<int> frames = parseFrames(options.frames);
  requireApart(options, frames);
  std::size_t failed = 0;
  for (int frame : frames) {
    Comparison result = comparer.compare(
        frameName(pathOf(options.a), frame), frameName(pathOf(options.b), frame),
        options.output.empty() ? fs::path() : frameName(pathOf(options.output), frame));
    result.frame = frame;
    failed += !result.passes;
    if (options.json) {
      list.push_back(comparisonJson(result));
    } else {
      writeOut("frame " + std::to_string(frame) + ": " + comparisonLine(result) + "\n");
    }
  }
  if (options.json) writeOut(list.dump(2) + "\n");
  if (failed > 0) {
    throw Failure(ExitStatus::Failed, std::to_string(failed) + " of " +
                                          std::to_string(frames.size()) + " frames differ");
  }
}

}  // namespace

void addCompareCommand(CLI::App& app) {
  CLI::App* command =
      app.add_subcommand("compare", "Compare two images: exit status 1 when they differ");
  const auto options = std::make_shared<CompareOptions>();
  command->add_option("A", options->a, "image, or a name with #### for --frames")->required();
  command->add_option("B", options->b, "image to compare it with")->required();
  command->add_option("--tolerance", options->tolerance,
                      "difference of a sample that is still equal, from black 0 to white 1: 0.004, "
                      "or 1/255 for a step of 8 bits (default: 0)");
  command->add_option("--allow", options->allow,
                      "pixels that may differ: a number, or a share as 0.5% (default: 0)");
  command->add_flag("--no-alpha", options->difference.ignoreAlpha,
                    "compare red, green and blue only");
  command->add_flag("--ignore-hidden", options->difference.ignoreHidden,
                    "leave out the colour of pixels that are transparent in both images");
  command->add_option("-o,--output", options->output,
                      "write a picture of the differences: .png, .tif or .exr");
  command->add_option("--amplify", options->amplify,
                      "multiply the differences in that picture: a number, or auto to make the "
                      "largest white");
  command->add_option("--frames", options->frames,
                      "compare the frames of two sequences, such as 1-100");
  command->add_flag("--json", options->json, "print the figures as JSON");
  command->callback([options] {
    if (options->frames.empty()) {
      compareTwo(*options);
    } else {
      compareFrames(*options);
    }
  });
}

}  // namespace vellumtide::cli
