#include "cli/sheet/sheet_picture.h"

#include <algorithm>

#include "cli/image/picture_drawing.h"
#include "cli/image/sample_math.h"

namespace vellumtide::cli {
namespace {

using headless::World;

constexpr int kMargin = 28, kColumnGap = 20, kRowGap = 20;
constexpr int kLabelGap = 6, kLabelLine = 19, kLabelSize = 14, kNameGap = 7;
constexpr int kTitleSize = 21, kTitleLine = 27, kSubtitleSize = 14, kSubtitleLine = 21;
constexpr int kBelowTitle = 22;
constexpr int kErrorPadding = 12;
constexpr int kLeastCell = 96;  // so that a label has room below a tiny picture

// Neutral greys, so that the ground does not tint what is looked at.
constexpr SheetColor kGround{0x26, 0x26, 0x26}, kBox{0x1F, 0x1F, 0x1F};
constexpr SheetColor kBright{0xEE, 0xEE, 0xEE}, kDim{0x9C, 0x9C, 0x9C};
constexpr SheetColor kErrorGround{0x3A, 0x1E, 0x1C}, kErrorText{0xFF, 0xB4, 0xA6};

class Painter {
 public:
  explicit Painter(World& world) : world_(world) {}

  void fill(const SheetPlace& place, SheetColor color) {
    const std::uint8_t argb[] = {255, color.red, color.green, color.blue};
    for (int y = place.top; y < place.top + place.height; ++y) {
      const auto row = rowOf<std::uint8_t>(world_, y).subspan(4 * std::size_t(place.left));
      for (std::size_t i = 0; i < 4 * std::size_t(place.width); ++i)
        row[i] = argb[i % 4];
    }
  }

  void draw(const World& picture, int left, int top) {
    for (int y = 0; y < picture.height(); ++y) {
      const auto from = rowOf<std::uint8_t>(picture, y);
      std::copy(from.begin(), from.end(),
                rowOf<std::uint8_t>(world_, top + y).begin() + 4 * std::ptrdiff_t(left));
    }
  }

  // With the base line's start at (left, base).
  void text(int left, int base, const TextLine& line, SheetColor color) {
    const std::uint8_t rgb[] = {color.red, color.green, color.blue};
    for (int y = 0; y < line.height; ++y) {
      const int row = base + line.top + y;
      for (int x = 0; x < line.width; ++x) {
        const int column = left + line.left + x;
        if (row < 0 || row >= world_.height() || column < 0 || column >= world_.width()) continue;
        const int cover = line.coverage[std::size_t(y) * line.width + x];
        std::uint8_t* const pixel = &rowOf<std::uint8_t>(world_, row)[4 * std::size_t(column)];
        for (int c = 0; c < 3; ++c)
          pixel[c + 1] = static_cast<std::uint8_t>(
              (pixel[c + 1] * (255 - cover) + rgb[c] * cover + 127) / 255);
      }
    }
  }

 private:
  World& world_;
};

// The text without its last character.
void shorten(std::string& text) {
  while (!text.empty() && (text.back() & 0xC0) == 0x80)
    text.pop_back();
  if (!text.empty()) text.pop_back();
}

// The text, or as much of it as fits in `width` pixels, with an ellipsis.
TextLine fitted(std::string text, const std::string& font, int size, int width) {
  TextLine line = drawText(text, font, size);
  while (line.advance > width && !text.empty()) {
    shorten(text);
    line = drawText(text + "\u2026", font, size);
  }
  return line;
}

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts(1);
  for (char c : text) {
    if (c == separator) {
      if (!parts.back().empty()) parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

// Lines of at most `width` pixels, at most `most` of them; what is left out ends in an ellipsis.
std::vector<TextLine> wrapped(const std::string& text, const std::string& font, int size, int width,
                              std::size_t most) {
  std::vector<std::string> lines;
  for (const std::string& paragraph : split(text, '\n')) {
    std::string line;
    for (const std::string& word : split(paragraph, ' ')) {
      const std::string longer = line + (line.empty() ? "" : " ") + word;
      if (!line.empty() && drawText(longer, font, size).advance > width) {
        lines.push_back(line);
        line = word;
      } else {
        line = longer;
      }
    }
    lines.push_back(line);
    if (lines.size() > most) break;
  }
  if (lines.size() > most) {
    lines.resize(most);
    lines.back() += "\u2026";
  }
  std::vector<TextLine> drawn;
  for (const std::string& line : lines)
    drawn.push_back(fitted(line, font, size, width));
  return drawn;
}

void drawError(Painter& painter, const SheetPlace& box, const std::string& error,
               const LabelFonts& fonts) {
  painter.fill(box, kErrorGround);
  const int width = box.width - 2 * kErrorPadding;
  const int room = std::max(1, (box.height - 2 * kErrorPadding) / kLabelLine);
  int base = box.top + kErrorPadding + kLabelSize;
  for (const TextLine& line : wrapped(error, fonts.plain, kLabelSize, width, std::size_t(room))) {
    painter.text(box.left + kErrorPadding, base, line, kErrorText);
    base += kLabelLine;
  }
}

// The value keeps its room before the name does.
void drawLabel(Painter& painter, int left, int base, const SheetLabel& label, int width,
               const LabelFonts& fonts) {
  if (label.name.empty()) {
    painter.text(left, base, fitted(label.value, fonts.plain, kLabelSize, width), kBright);
    return;
  }
  const int valueWidth = drawText(label.value, fonts.plain, kLabelSize).advance;
  const int nameRoom = std::max(width - kNameGap - valueWidth, width / 3);
  const TextLine name = fitted(label.name, fonts.plain, kLabelSize, nameRoom);
  const int used = name.advance + kNameGap;
  painter.text(left, base, name, kDim);
  painter.text(left + used, base, fitted(label.value, fonts.plain, kLabelSize, width - used),
               kBright);
}

}  // namespace

SheetPlace SheetLayout::boxOf(const SheetCell& cell) const {
  return {kMargin + cell.column * columnStep, top + cell.row * rowStep, cellWidth, cellHeight};
}

SheetPlace SheetLayout::placeOf(const SheetCell& cell) const {
  const SheetPlace box = boxOf(cell);
  if (!cell.error.empty()) return box;
  const int wide = cell.picture.width(), high = cell.picture.height();
  return {box.left + (box.width - wide) / 2, box.top + (box.height - high) / 2, wide, high};
}

int Sheet::columns() const {
  int most = 0;
  for (const SheetCell& cell : cells)
    most = std::max(most, cell.column + 1);
  return most;
}

int Sheet::rows() const {
  int most = 0;
  for (const SheetCell& cell : cells)
    most = std::max(most, cell.row + 1);
  return most;
}

SheetLayout layOut(const Sheet& sheet) {
  SheetLayout layout;
  layout.cellWidth = kLeastCell;
  std::size_t lines = 0;
  for (const SheetCell& cell : sheet.cells) {
    layout.cellWidth = std::max(layout.cellWidth, cell.picture.width());
    layout.cellHeight = std::max(layout.cellHeight, cell.picture.height());
    lines = std::max(lines, cell.labels.size());
  }
  const int labels = lines > 0 ? kLabelGap + kLabelLine * static_cast<int>(lines) : 0;
  layout.columnStep = layout.cellWidth + kColumnGap;
  layout.rowStep = layout.cellHeight + labels + kRowGap;
  layout.top = kMargin;
  if (!sheet.title.empty()) layout.top += kTitleLine;
  if (!sheet.subtitle.empty()) layout.top += kSubtitleLine;
  if (layout.top > kMargin) layout.top += kBelowTitle - kLabelLine / 2;
  layout.width = 2 * kMargin + sheet.columns() * layout.columnStep - kColumnGap;
  // The last label's descenders take a part of the margin.
  layout.height = layout.top + sheet.rows() * layout.rowStep - kRowGap + kMargin;
  return layout;
}

World drawSheet(const Sheet& sheet, const SheetLayout& layout, const LabelFonts& fonts) {
  World world(layout.width, layout.height, PF_PixelFormat_ARGB32);
  Painter painter(world);
  painter.fill({0, 0, layout.width, layout.height}, kGround);
  const int room = layout.width - 2 * kMargin;
  const int base = kMargin + kTitleSize - 4;
  if (!sheet.title.empty()) {
    painter.text(kMargin, base, fitted(sheet.title, fonts.bold, kTitleSize, room), kBright);
  }
  if (!sheet.subtitle.empty()) {
    painter.text(kMargin, base + kSubtitleLine + 3,
                 fitted(sheet.subtitle, fonts.plain, kSubtitleSize, room), kDim);
  }
  for (const SheetCell& cell : sheet.cells) {
    const SheetPlace box = layout.boxOf(cell), place = layout.placeOf(cell);
    if (!cell.error.empty()) {
      drawError(painter, box, cell.error, fonts);
    } else {
      if (place.width < box.width || place.height < box.height) painter.fill(box, kBox);
      painter.draw(cell.picture, place.left, place.top);
    }
    int line = box.top + box.height + kLabelGap + kLabelSize;
    for (const SheetLabel& label : cell.labels) {
      drawLabel(painter, box.left, line, label, box.width, fonts);
      line += kLabelLine;
    }
  }
  return world;
}

}  // namespace vellumtide::cli
