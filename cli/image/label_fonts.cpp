#include <filesystem>

#include "cli/image/picture_drawing.h"
#include "cli/text/failure.h"
#include "cli/text/utf8_path.h"

namespace vellumtide::cli {

LabelFonts findFonts(const std::string& wanted) {
  std::error_code ignored;
  if (!wanted.empty()) {
    if (!std::filesystem::is_regular_file(pathOf(wanted), ignored))
      throw Failure(ExitStatus::Failed, wanted + ": cannot be used as a font");
    return {wanted, wanted};
  }
  constexpr const char* kFolders[] = {
      "/usr/share/fonts/truetype/dejavu", "/usr/share/fonts/dejavu-sans-fonts",
      "/usr/share/fonts/dejavu", "/usr/share/fonts/TTF", "/usr/local/share/fonts/dejavu"};
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
