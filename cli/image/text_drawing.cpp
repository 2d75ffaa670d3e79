#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <memory>

#include "cli/image/picture_drawing.h"
#include "cli/text/failure.h"
#include "headless/utf8.h"

namespace vellumtide::cli {
namespace {

struct Close {
  void operator()(FT_Library library) const { FT_Done_FreeType(library); }
  void operator()(FT_Face face) const { FT_Done_Face(face); }
};

// A glyph in its place; positions are pixels from the start of the base line, downwards.
struct Glyph {
  int left, top, width, height;
  std::vector<std::uint8_t> coverage;
};

Glyph copyOf(const FT_GlyphSlot slot, FT_Pos pen) {
  const FT_Bitmap& bitmap = slot->bitmap;
  Glyph glyph{static_cast<int>(pen >> 6) + slot->bitmap_left,
              -slot->bitmap_top,
              static_cast<int>(bitmap.width),
              static_cast<int>(bitmap.rows),
              {}};
  for (unsigned y = 0; y < bitmap.rows; ++y) {
    const std::uint8_t* const row = bitmap.buffer + static_cast<std::ptrdiff_t>(y) * bitmap.pitch;
    glyph.coverage.insert(glyph.coverage.end(), row, row + bitmap.width);
  }
  return glyph;
}

// The glyphs of the text; `pen` ends behind the last, in 64ths of a pixel.
std::vector<Glyph> glyphsOf(std::string_view text, FT_Face face, FT_Pos& pen) {
  std::vector<Glyph> glyphs;
  FT_UInt last = 0;
  while (!text.empty()) {
    const FT_UInt index = FT_Get_Char_Index(face, headless::takeCharacter(text));
    FT_Vector kerning{};
    if (last && index) FT_Get_Kerning(face, last, index, FT_KERNING_UNFITTED, &kerning);
    last = index;
    pen += kerning.x;
    if (FT_Load_Glyph(face, index, FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP) != 0) continue;
    FT_Outline_Translate(&face->glyph->outline, pen & 63, 0);
    if (FT_Render_Glyph(face->glyph, FT_RENDER_MODE_NORMAL) == 0) {
      glyphs.push_back(copyOf(face->glyph, pen));
    }
    pen += face->glyph->advance.x;
  }
  return glyphs;
}

}  // namespace

TextLine drawText(std::string_view text, const std::string& fontFile, int size) {
  FT_Library library = nullptr;
  FT_Face face = nullptr;
  const bool started = FT_Init_FreeType(&library) == 0;
  const std::unique_ptr<FT_LibraryRec_, Close> libraryOwner(started ? library : nullptr);
  const bool opened = started && FT_New_Face(library, fontFile.c_str(), 0, &face) == 0;
  const std::unique_ptr<FT_FaceRec_, Close> faceOwner(opened ? face : nullptr);
  if (!opened || !FT_IS_SCALABLE(face) ||
      FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(size)) != 0) {
    throw Failure(ExitStatus::Failed, fontFile + ": cannot be used as a font");
  }

  FT_Pos pen = 0;
  const std::vector<Glyph> glyphs = glyphsOf(text, face, pen);
  TextLine line;
  line.advance = static_cast<int>((pen + 63) >> 6);
  int right = 0, bottom = 0;
  for (const Glyph& g : glyphs) {
    line.left = std::min(line.left, g.left);
    line.top = std::min(line.top, g.top);
    right = std::max(right, g.left + g.width);
    bottom = std::max(bottom, g.top + g.height);
  }
  line.width = right - line.left;
  line.height = bottom - line.top;
  line.coverage.resize(std::size_t(line.width) * line.height);
  for (const Glyph& g : glyphs) {
    for (int y = 0; y < g.height; ++y) {
      const std::uint8_t* from = g.coverage.data() + std::size_t(y) * g.width;
      std::uint8_t* to = line.coverage.data() + std::size_t(g.top - line.top + y) * line.width +
                         (g.left - line.left);
      for (int x = 0; x < g.width; ++x)
        to[x] = std::max(to[x], from[x]);
    }
  }
  return line;
}

}  // namespace vellumtide::cli
