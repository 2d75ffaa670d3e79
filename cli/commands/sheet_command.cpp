#include <memory>

#include "cli/commands/commands.h"
#include "cli/commands/option_checks.h"
#include "cli/image/image_file.h"
#include "cli/sheet/sheet_job.h"
#include "cli/text/failure.h"
#include "cli/text/number_text.h"

namespace vellumtide::cli {
namespace {

// Texts as typed, before they are understood.
struct SheetTexts {
  std::string size, cell, background;
  int depth = 0, columns = 0;
  std::string title = "\n";  // none typed
};

std::pair<int, int> parseSize(const std::string& option, const std::string& text) {
  const std::size_t x = text.find('x');
  const double width = parseNumber(text.substr(0, x)).value_or(0);
  const double height = x == std::string::npos ? 0 : parseNumber(text.substr(x + 1)).value_or(0);
  const auto isSide = [](double side) { return side >= 1 && side == static_cast<int>(side); };
  if (isTooLarge(width, height, 4) || !isSide(width) || !isSide(height)) {
    failUsage(option + " " + text + ": expected WIDTHxHEIGHT, each from 1 to " +
              std::to_string(kLargestSide));
  }
  return {static_cast<int>(width), static_cast<int>(height)};
}

SheetColor parseColor(const std::string& text) {
  const bool valid = text.size() == 7 && text[0] == '#' &&
                     text.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string::npos;
  if (!valid) failUsage("--background " + text + ": expected checker or #rrggbb");
  const auto part = [&](std::size_t i) {
    return static_cast<std::uint8_t>(std::stoi(text.substr(i, 2), nullptr, 16));
  };
  return {part(1), part(3), part(5)};
}

void understand(const SheetTexts& texts, SheetJob& job) {
  if (!texts.size.empty()) {
    if (!job.inputs.empty()) failUsage("--size: the input image gives the size");
    std::tie(job.width, job.height) = parseSize("--size", texts.size);
  }
  if (texts.cell == "full") {
    job.cell.mostWidth = job.cell.mostHeight = 0;
  } else if (!texts.cell.empty()) {
    std::tie(job.cell.mostWidth, job.cell.mostHeight) = parseSize("--cell", texts.cell);
  }
  if (!texts.background.empty() && texts.background != "checker") {
    job.cell.background = parseColor(texts.background);
  }
  if (texts.depth != 0) job.depth = texts.depth;
  if (texts.columns != 0) job.columns = texts.columns;
  if (texts.title != "\n") job.title = texts.title;
}

}  // namespace

void addSheetCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand(
      "sheet", "Draw a labelled contact sheet: a parameter sweep, or several programs");
  const auto job = std::make_shared<SheetJob>();
  const auto texts = std::make_shared<SheetTexts>();
  command
      ->add_option("SOURCE", job->sources,
                   "kernel (.pbk), graph (.pbg), or an image to show as it is; one that fails says "
                   "why in its cell")
      ->required();
  command
      ->add_option("-i,--input", job->inputs,
                   "image for the programs' next input; give -i up to four times")
      ->allow_extra_args(false);
  command->add_option("--size", texts->size, "WxH of a transparent layer, instead of an image");
  command->add_option("-o,--output", job->output, "file to write: .png, .tif or .exr")->required();
  command
      ->add_option(
          "-s,--sweep", job->sweeps,
          "NAME=VALUES: a cell for each value of the control; a second sweep goes down. VALUES are "
          "8,16,32 for a number, an entry or a switch, else A|B|C; or A..B (five numbers), A..B/N "
          "(N numbers), A..BxS (steps of S). NAME alone: all entries, or the program's range")
      ->allow_extra_args(false);
  command
      ->add_option("-p,--set", job->settings,
                   "NAME=VALUE: set a control in all cells, as for render")
      ->allow_extra_args(false);
  command->add_option("--columns", texts->columns, "cells in a row (default: by their number)")
      ->check(wholeNumber(1, 1000));
  command->add_option("--cell", texts->cell,
                      "WxH that larger pictures are scaled to fit in, or full (default: 320x320)");
  command->add_option("--background", texts->background,
                      "behind transparent pixels: checker or #rrggbb (default: checker)");
  command->add_option("--title", texts->title,
                      "first line of the sheet, \"\" for none (default: program and image)");
  command
      ->add_option("--depth", texts->depth, "bits a channel to render with (default: the input's)")
      ->check(CLI::IsMember({"8", "16", "32"}));
  command->add_option("--font", job->font, "font file for the labels (default: DejaVu Sans)");
  command->add_flag("--json", job->json, "print the cells: settings, place, status");
  command->add_option("--module", job->module, "the effect module to use");
  command->callback([job, texts] {
    understand(*texts, *job);
    makeSheet(*job);
  });
}

}  // namespace vellumtide::cli
