#include <filesystem>

#include "cli/failure.h"
#include "cli/picture_drawing.h"

namespace vellumtide::cli {

LabelFonts findFonts(const std::string& wanted) {
  if (!wanted.empty()) return {wanted, wanted};
  constexpr const char* kFolders[] = {
      "/usr/share/fonts/truetype/dejavu", "/usr/share/fonts/dejavu-sans-fonts",
      "/usr/share/fonts/dejavu", "/usr/share/fonts/TTF", "/usr/local/share/fonts/dejavu"};
  std::error_code ignored;
  for (const std::string folder : kFolders) {
    LabelFonts fonts{folder + "/DejaVuSans.ttf", folder + "/DejaVuSans-Bold.ttf"};
    if (!std::filesystem::is_regular_file(fonts.plain, ignored)) continue;
    if (!std::filesystem::is_regular_file(fonts.bold, ignored)) fonts.bold = fonts.plain;
    return fonts;
  }
  throw Failure(ExitStatus::Failed,
                "there is no font for the labels: install DejaVu Sans (Debian: apt-get install "
                "fonts-dejavu-core), or name a font file with --font");
}

}  // namespace vellumtide::cli
