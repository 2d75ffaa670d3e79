// What a cell of a sheet shows of a rendered picture.
#pragma once

#include <optional>

#include "cli/sheet/sheet_picture.h"

namespace vellumtide::cli {

struct CellOptions {
  int mostWidth = 320, mostHeight = 320;  // larger pictures are made smaller, 0: none is
  std::optional<SheetColor> background;   // behind transparent pixels; none: a checkerboard
};

// The picture as 8-bit opaque pixels, whole, in its own proportions (`pixelAspect` is the width of
// a pixel over its height). Values are held to black..white first; NaN is black.
headless::World cellPicture(const headless::World& rendered, double pixelAspect,
                            const CellOptions& options);

}  // namespace vellumtide::cli
