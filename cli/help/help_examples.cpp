#include "cli/help/help_examples.h"

#include <sstream>

#include "cli/help/command_tree.h"

namespace vellumtide::cli {
namespace {

struct Examples {
  std::string_view path, lines;
};

constexpr Examples kExamples[] = {
    {"render", R"(vellumtide render mosaic.pbk -i photo.png -o tiles.png -p "Tile Size=24"
# two inputs, a colour, a pop-up entry
vellumtide render blend.pbk -i photo.png -i tiles.png -o mix.png -p Mode=Screen
# a sequence
vellumtide render twirl.pbk -i in.####.exr -o out.####.exr --frames 1-10
# a control that moves
vellumtide render twirl.pbk -i photo.png -o turn.####.png --frames 1-5 \
    -k Twist@1=0 -k Twist@5=360
# no input at all
vellumtide render test_chart.pbk --size 640x360 -o chart.png)"},
    {"inspect", R"(vellumtide inspect mosaic.pbk
vellumtide inspect old_print.pbg --json
# a drawing of the graph for a web page
vellumtide inspect star_glow.pbg --graph svg -o star_glow.svg)"},
    {"glsl", R"(vellumtide glsl mosaic.pbk --stage fragment
vellumtide glsl gaussian_blur.pbg --node rows --stage vertex)"},
    {"check", R"(vellumtide check mosaic.pbk star_glow.pbg
vellumtide check --json examples/kernels/*.pbk >report.json)"},
    {"sheet", R"(vellumtide sheet mosaic.pbk -i photo.png -o sizes.png --sweep "Tile Size=8..64x8"
# one sweep across, one down; values of a colour stand between bars
vellumtide sheet mosaic.pbk -i photo.png -o grid.png --sweep Shape --sweep "Joint=#000000|#ffffff"
# several programs beside the image itself
vellumtide sheet photo.png oil_paint.pbk halftone.pbk -i photo.png -o looks.png)"},
    {"compare", R"(vellumtide render test_chart.pbk --size 192x108 -o a.png
vellumtide render test_chart.pbk --size 192x108 -o b.png
vellumtide compare a.png b.png --tolerance 1/255
vellumtide compare a.png b.png -o difference.png --amplify auto --json)"},
    {"info", R"(vellumtide info mosaic.pbk)"},
    {"about", R"(vellumtide about
vellumtide about --json)"},
    {"project new", R"(vellumtide project new shot.json mosaic.pbk -i photo.png -p Shape=Disc)"},
    {"project show", R"(vellumtide project new shot.json mosaic.pbk -i photo.png
vellumtide project show shot.json
vellumtide project show shot.json --json)"},
    {"project render", R"(vellumtide project new shot.json mosaic.pbk -i photo.png
vellumtide project render shot.json -o tiles.png)"},
    {"completion", R"(# bash, now; put the line into ~/.bashrc to keep it
source <(vellumtide completion bash)
# fish
vellumtide completion fish >vellumtide.fish)"},
    {"help", R"(vellumtide help render
vellumtide help project new)"},
};

}  // namespace

std::string_view examplesOf(std::string_view path) {
  for (const Examples& examples : kExamples) {
    if (examples.path == path) return examples.lines;
  }
  return "";
}

void addExamples(CLI::App& app) {
  forEachCommand(app, [&app](const std::string& path, const CLI::App&) {
    std::istringstream lines{std::string(examplesOf(path))};
    std::string footer = "Examples:";
    for (std::string line; std::getline(lines, line);)
      footer += "\n  " + line;
    if (footer.size() > sizeof "Examples:") findCommand(app, path)->footer(footer);
  });
}

}  // namespace vellumtide::cli
