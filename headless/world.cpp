#include "headless/world.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace vellumtide::headless {
namespace {

constexpr size_t kGuardBytes = 256;
constexpr uint8_t kGuardByte = 0xFD;

bool isGuard(const uint8_t* bytes, size_t count) {
  return count == 0 || (bytes[0] == kGuardByte && std::memcmp(bytes, bytes + 1, count - 1) == 0);
}

template <typename T>
T stepOf(double value, double white) {
  return static_cast<T>(std::lround(std::clamp(value, 0.0, 1.0) * white));
}

}  // namespace

int bytesPerPixel(PF_PixelFormat format) {
  if (format == PF_PixelFormat_ARGB128) return 16;
  return format == PF_PixelFormat_ARGB64 ? 8 : 4;
}

PF_PixelFormat pixelFormatOfDepth(int bitsPerChannel) {
  if (bitsPerChannel == 32) return PF_PixelFormat_ARGB128;
  return bitsPerChannel == 16 ? PF_PixelFormat_ARGB64 : PF_PixelFormat_ARGB32;
}

int depthOfPixelFormat(PF_PixelFormat format) {
  return bytesPerPixel(format) * 2;
}

const char* pixelFormatName(PF_PixelFormat format) {
  if (format == PF_PixelFormat_ARGB128) return "ae32";
  return format == PF_PixelFormat_ARGB64 ? "ae16" : "argb";
}

World::World(int width, int height, PF_PixelFormat format, WorldLayout layout)
    : format_(format), layout_(layout) {
  if (width < 0 || height < 0 || layout.rowPadding < 0) {
    throw std::invalid_argument("a world of negative size");
  }
  const int64_t rowBytes = int64_t{width} * bytesPerPixel(format) + layout.rowPadding;
  if (rowBytes > std::numeric_limits<A_long>::max()) {
    throw std::invalid_argument("a world whose rows are too long");
  }
  def_.width = width;
  def_.height = height;
  def_.rowbytes = static_cast<A_long>(rowBytes);
  make();
}

World::World(const World& other)
    : World(other.width(), other.height(), other.format_, other.layout_) {
  def_.pix_aspect_ratio = other.def_.pix_aspect_ratio;
  std::memcpy(bytes_.data(), other.bytes_.data(), bytes_.size());
}

World& World::operator=(const World& other) {
  if (this != &other) *this = World(other);
  return *this;
}

void World::make() {
  const size_t pixelBytes = static_cast<size_t>(width()) * bytesPerPixel(format_);
  const size_t allRows = static_cast<size_t>(rowBytes()) * height();
  bytes_.assign(allRows + 2 * kGuardBytes, kGuardByte);
  def_.data = reinterpret_cast<PF_PixelPtr>(bytes_.data() + kGuardBytes);
  for (int y = 0; y < height(); ++y)
    std::memset(row(y), 0, pixelBytes);
  def_.world_flags = PF_WorldFlag_WRITEABLE;
  if (format_ != PF_PixelFormat_ARGB32) def_.world_flags |= PF_WorldFlag_DEEP;
  def_.extent_hint = {0, 0, width(), height()};
  def_.pix_aspect_ratio = {1, 1};
  def_.origin_x = layout_.originX;
  def_.origin_y = layout_.originY;
}

void World::setOrigin(int x, int y) {
  layout_.originX = def_.origin_x = x;
  layout_.originY = def_.origin_y = y;
}

PF_LRect World::rect() const {
  return {layout_.originX, layout_.originY, layout_.originX + width(), layout_.originY + height()};
}

uint8_t* World::row(int y) {
  return bytes_.data() + kGuardBytes + static_cast<size_t>(y) * static_cast<size_t>(rowBytes());
}

const uint8_t* World::row(int y) const {
  return const_cast<World*>(this)->row(y);
}

std::vector<double> World::pixel(int x, int y) const {
  const uint8_t* at = row(y) + static_cast<size_t>(x) * bytesPerPixel(format_);
  if (format_ == PF_PixelFormat_ARGB128) {
    PF_PixelFloat p;
    std::memcpy(&p, at, sizeof p);
    return {p.red, p.green, p.blue, p.alpha};
  }
  if (format_ == PF_PixelFormat_ARGB64) {
    PF_Pixel16 p;
    std::memcpy(&p, at, sizeof p);
    return {p.red / 32768.0, p.green / 32768.0, p.blue / 32768.0, p.alpha / 32768.0};
  }
  return {at[1] / 255.0, at[2] / 255.0, at[3] / 255.0, at[0] / 255.0};
}

void World::setPixel(int x, int y, double red, double green, double blue, double alpha) {
  uint8_t* at = row(y) + static_cast<size_t>(x) * bytesPerPixel(format_);
  if (format_ == PF_PixelFormat_ARGB128) {
    const PF_PixelFloat p{static_cast<float>(alpha), static_cast<float>(red),
                          static_cast<float>(green), static_cast<float>(blue)};
    std::memcpy(at, &p, sizeof p);
  } else if (format_ == PF_PixelFormat_ARGB64) {
    const PF_Pixel16 p{stepOf<A_u_short>(alpha, 32768), stepOf<A_u_short>(red, 32768),
                       stepOf<A_u_short>(green, 32768), stepOf<A_u_short>(blue, 32768)};
    std::memcpy(at, &p, sizeof p);
  } else {
    const PF_Pixel p{stepOf<A_u_char>(alpha, 255), stepOf<A_u_char>(red, 255),
                     stepOf<A_u_char>(green, 255), stepOf<A_u_char>(blue, 255)};
    std::memcpy(at, &p, sizeof p);
  }
}

void World::fillBytes(uint8_t value) {
  const size_t pixelBytes = static_cast<size_t>(width()) * bytesPerPixel(format_);
  for (int y = 0; y < height(); ++y)
    std::memset(row(y), value, pixelBytes);
}

std::string World::damage() const {
  if (!isGuard(bytes_.data(), kGuardBytes)) return "before the first row";
  if (!isGuard(bytes_.data() + bytes_.size() - kGuardBytes, kGuardBytes)) {
    return "behind the last row";
  }
  const size_t pixelBytes = static_cast<size_t>(width()) * bytesPerPixel(format_);
  for (int y = 0; y < height(); ++y) {
    if (!isGuard(row(y) + pixelBytes, static_cast<size_t>(rowBytes()) - pixelBytes)) {
      return "row padding of row " + std::to_string(y);
    }
  }
  return "";
}

uint64_t World::checksum() const {
  // Four interleaved multiply-and-add sums over 8-byte words; rows end on whole words or are padded
  // with what is left.
  uint64_t sums[4] = {1, 2, 3, 4};
  const size_t pixelBytes = static_cast<size_t>(width()) * bytesPerPixel(format_);
  for (int y = 0; y < height(); ++y) {
    const uint8_t* bytes = row(y);
    size_t at = 0;
    for (; at + 32 <= pixelBytes; at += 32) {
      uint64_t words[4];
      std::memcpy(words, bytes + at, 32);
      for (int i = 0; i < 4; ++i)
        sums[i] = sums[i] * 0x9E3779B97F4A7C15u + words[i];
    }
    for (; at < pixelBytes; at += 4) {
      uint32_t word;
      std::memcpy(&word, bytes + at, 4);
      sums[0] = sums[0] * 0x9E3779B97F4A7C15u + word;
    }
  }
  return ((sums[0] * 31 + sums[1]) * 31 + sums[2]) * 31 + sums[3];
}

}  // namespace vellumtide::headless
