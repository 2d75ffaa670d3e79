// What the renderer asks of a program: the host's buffers and the size to draw at.
#pragma once

#include <array>
#include <cstdint>

namespace vellumtide {

// One pixel buffer.
struct ImageDesc {
  std::int32_t index = -1;    // for an input: the image node it feeds; -1 when unused
  float pixelAspect = 1.0f;   // width of a pixel over its height
  std::int32_t depth = 0;     // 1: 8 bits, 2: 16 bits in 0..32768, 3: full 16 bits, 4: float
  std::int32_t channels = 0;  // 1: one channel, 2: three, 3 or 4: four
  std::int32_t x = 0;         // where the pixels go in, or come from, the node image
  std::int32_t y = 0;
  std::uint32_t width = 0;  // pixels
  std::uint32_t height = 0;
  std::int32_t rowLength = 0;  // pixels from row to row
  void* pixels = nullptr;      // null: no buffer
  // Bytes from row to row, where they are not rowLength pixels; negative for rows that lie upwards.
  std::int32_t rowBytes = 0;
};

struct RenderContext {
  ImageDesc output;          // for an evaluation its size is what every node draws at
  float downsampleX = 1.0f;  // 1 is full resolution
  float downsampleY = 1.0f;
  std::array<ImageDesc, 4> inputs;
};

}  // namespace vellumtide
