#include "cli/image/picture_drawing.h"
#include "cli/text/failure.h"

namespace vellumtide::cli {
namespace {

[[noreturn]] void fail() {
  throw Failure(ExitStatus::Failed,
                "this build draws no sheets: they need the image library, which it goes without");
}

}  // namespace

LabelFonts findFonts(const std::string&) {
  fail();
}

TextLine drawText(std::string_view, const std::string&, int) {
  fail();
}

headless::World scaledPicture(const headless::World&, int, int) {
  fail();
}

}  // namespace vellumtide::cli
