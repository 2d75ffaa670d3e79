#pragma once

namespace vellumtide {

// Scales all four channels of pixel transfers for a scope: 2 on the way from the host's 16-bit
// range 0..32768 to GL's full 16 bits, 0.5 on the way back. A factor of 1 changes nothing.
class ScopedChannelScale {
 public:
  explicit ScopedChannelScale(float factor);
  ~ScopedChannelScale();
  ScopedChannelScale(const ScopedChannelScale&) = delete;
  ScopedChannelScale& operator=(const ScopedChannelScale&) = delete;

 private:
  bool scaled_;
};

}  // namespace vellumtide
