// A contact sheet as a picture: a title, cells in a grid, labels below each.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/image/picture_drawing.h"
#include "headless/world.h"

namespace vellumtide::cli {

struct SheetColor {
  std::uint8_t red = 0, green = 0, blue = 0;
};

// A line below a cell: the name of a parameter and its value, or a value alone.
struct SheetLabel {
  std::string name, value;
};

struct SheetCell {
  int column = 0, row = 0;
  headless::World picture{0, 0, PF_PixelFormat_ARGB32};  // opaque; no pixels where there is none
  std::string error;                                     // what to say instead
  std::vector<SheetLabel> labels;
};

// A rectangle in pixels.
struct SheetPlace {
  int left = 0, top = 0, width = 0, height = 0;
};

// Places in pixels.
struct SheetLayout {
  int width = 0, height = 0;          // of the sheet
  int cellWidth = 0, cellHeight = 0;  // of the box that holds a cell's picture
  int top = 0, columnStep = 0, rowStep = 0;

  // The box of a cell, and the picture in the middle of it (the box where the cell failed).
  SheetPlace boxOf(const SheetCell& cell) const;
  SheetPlace placeOf(const SheetCell& cell) const;
};

struct Sheet {
  std::string title, subtitle;  // "" for none; no subtitle alone
  std::vector<SheetCell> cells;

  int columns() const, rows() const;
};

// Boxes as large as the largest picture.
SheetLayout layOut(const Sheet& sheet);

headless::World drawSheet(const Sheet& sheet, const SheetLayout& layout, const LabelFonts& fonts);

}  // namespace vellumtide::cli
