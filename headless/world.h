// A pixel buffer of the host (ARGB, straight alpha, top row first) with padded rows and guard
// bytes. 8-bit channels run from 0 to 255, 16-bit from 0 to 32768, 32-bit are floats, 1.0 white.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "aeapi/aeapi.h"

namespace vellumtide::headless {

struct WorldLayout {
  int rowPadding = 16;  // bytes after each row; multiples of 16 suit every format
  int originX = 0;      // place of the buffer's first pixel in its layer
  int originY = 0;
};

int bytesPerPixel(PF_PixelFormat format);               // 4, 8 or 16
PF_PixelFormat pixelFormatOfDepth(int bitsPerChannel);  // 8, 16 or 32
int depthOfPixelFormat(PF_PixelFormat format);          // 8, 16 or 32
const char* pixelFormatName(PF_PixelFormat format);     // "argb", "ae16", "ae32"

class World {
 public:
  // Transparent black of `width` times `height` pixels; a size of 0 is allowed and has no pixels.
  World(int width, int height, PF_PixelFormat format, WorldLayout layout = {});
  World(World&&) noexcept = default;
  World& operator=(World&&) noexcept = default;
  World(const World& other);  // deep copy, padding and guards made anew
  World& operator=(const World& other);

  int width() const { return def_.width; }
  int height() const { return def_.height; }
  int rowBytes() const { return def_.rowbytes; }
  PF_PixelFormat format() const { return format_; }
  const WorldLayout& layout() const { return layout_; }
  void setOrigin(int x, int y);
  PF_LRect rect() const;  // origin and size in layer coordinates

  uint8_t* row(int y);
  const uint8_t* row(int y) const;
  // Pixel as red, green, blue, alpha: 8-bit and 16-bit divided by 255 and 32768, floats as they
  // are.
  std::vector<double> pixel(int x, int y) const;
  void setPixel(int x, int y, double red, double green, double blue, double alpha);
  void fillBytes(uint8_t value);  // every byte of every pixel

  // What a module is given; `def` points into this object and stays valid while it lives unmoved.
  PF_EffectWorld& def() { return def_; }

  // Says what was written outside the pixels ("row padding of row 3", "before the first row"), ""
  // when nothing was.
  std::string damage() const;
  // A number that changes when any pixel changes.
  uint64_t checksum() const;

 private:
  void make();

  PF_PixelFormat format_;
  WorldLayout layout_;
  std::vector<uint8_t> bytes_;
  PF_EffectWorld def_{};
};

// The same picture in another format, rounded to the nearest step; padding and origin as `world`.
World convertWorld(const World& world, PF_PixelFormat format);
// The picture at a lower resolution, ceil(size * num / den) pixels: the mean over the area of each
// new pixel, colours weighted by alpha.
World downsampleWorld(const World& world, PF_RationalScale x, PF_RationalScale y);

}  // namespace vellumtide::headless
