// Drawing that the image module does: pictures made smaller, lines of text. Where a build has no
// such module every function is a Failure (ExitStatus::Failed) that says so.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "headless/world.h"

namespace vellumtide::cli {

// One line of text as coverage from 0 to 255, a row after the other.
struct TextLine {
  int advance = 0;        // pixels that the text takes up on its line
  int left = 0, top = 0;  // of the first pixel, from the start of the base line, downwards
  int width = 0, height = 0;
  std::vector<std::uint8_t> coverage;
};

struct LabelFonts {
  std::string plain, bold;  // files
};

// The font for labels: `wanted` where it is not "", else one of the usual places of DejaVu Sans.
// Throws Failure (ExitStatus::Failed) when there is none.
LabelFonts findFonts(const std::string& wanted);

// UTF-8 text in a font file, `size` pixels to the em. Throws Failure (ExitStatus::Failed) when the
// file is no font.
TextLine drawText(std::string_view text, const std::string& fontFile, int size);

// The picture (32 bits) at another size, each channel for itself, through a filter of good quality.
headless::World scaledPicture(const headless::World& picture, int width, int height);

}  // namespace vellumtide::cli
