// Frames of a program drawn straight from and into buffers of every place, size and row length.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "gl/gl_loader.h"
#include "gl/window_device.h"
#include "kernel/pbk_parser.h"
#include "nodes/pb_graph.h"
#include "tests/support/room_host.h"

namespace vellumtide {
namespace {

constexpr unsigned char kGuard = 0xA5;
constexpr int kGuardBytes = 4096;
constexpr int kWidth = 6, kHeight = 5;  // of the frame
constexpr int kHostOrder = 18;

struct Place {
  int x, y, width, height;
};

// Four-channel pixels between guard bytes. `extra` bytes follow each row; a negative number lays
// the rows upwards.
class Buffer {
 public:
  Buffer(int depth, const Place& place, int extra)
      : pixelBytes_(depth == 4 ? 16 : depth * 4),
        rowBytes_(place.width * pixelBytes_ + std::abs(extra)),
        bytes_(rowBytes_ * place.height + 2 * kGuardBytes, kGuard) {
    const int sign = extra < 0 ? -1 : 1;
    unsigned char* first = bytes_.data() + kGuardBytes;
    desc.index = 0;
    desc.depth = depth;
    desc.channels = 4;
    desc.x = place.x;
    desc.y = place.y;
    desc.width = static_cast<std::uint32_t>(place.width);
    desc.height = static_cast<std::uint32_t>(place.height);
    desc.rowBytes = sign * rowBytes_;
    desc.rowLength = desc.rowBytes / pixelBytes_;
    desc.pixels = sign > 0 ? first : first + rowBytes_ * std::max(place.height - 1, 0);
  }

  unsigned char* at(int column, int row) const {
    return static_cast<unsigned char*>(desc.pixels) + row * desc.rowBytes + column * pixelBytes_;
  }

  // Another value in each channel of each pixel; 16-bit ones stay within the host's range.
  void fill() {
    int next = 1;
    for (int row = 0; row < static_cast<int>(desc.height); ++row) {
      for (int channel = 0; channel < static_cast<int>(desc.width) * 4; ++channel, ++next) {
        unsigned char* place = at(0, row) + channel * pixelBytes_ / 4;
        const auto word = static_cast<std::uint16_t>(next * 73 % 32768);
        const float number = static_cast<float>(next) * 0.25f - 3.0f;
        if (desc.depth == 1) *place = static_cast<unsigned char>(next * 7);
        if (desc.depth == 2) std::memcpy(place, &word, sizeof word);
        if (desc.depth == 4) std::memcpy(place, &number, sizeof number);
      }
    }
  }

  // The pixel that an image shows at (x, y) of a frame, transparent black outside.
  std::vector<unsigned char> shown(int x, int y) const {
    std::vector<unsigned char> pixel(static_cast<std::size_t>(pixelBytes_));
    const int column = x - desc.x, row = y - desc.y;
    const bool inside = column >= 0 && row >= 0 && column < static_cast<int>(desc.width) &&
                        row < static_cast<int>(desc.height) && x >= 0 && y >= 0 && x < kWidth &&
                        y < kHeight;
    if (inside) std::memcpy(pixel.data(), at(column, row), pixel.size());
    return pixel;
  }

  // Whether every byte that belongs to no pixel is still what it was.
  bool guardsAreWhole() const {
    std::vector<unsigned char> bytes = bytes_;
    for (int row = 0; row < static_cast<int>(desc.height); ++row)
      std::memset(bytes.data() + (at(0, row) - bytes_.data()), kGuard,
                  static_cast<std::size_t>(pixelBytes_) * desc.width);
    return bytes == std::vector<unsigned char>(bytes.size(), kGuard);
  }

  ImageDesc desc;

 private:
  int pixelBytes_;
  int rowBytes_;
  std::vector<unsigned char> bytes_;
};

// As image nodes give their pixels back: the last channel first.
std::vector<unsigned char> asImage(const std::vector<unsigned char>& pixel) {
  const std::size_t size = pixel.size() / 4;
  std::vector<unsigned char> result;
  for (std::size_t channel = 4; channel-- > 0;)
    result.insert(result.end(), &pixel[channel * size], &pixel[channel * size] + size);
  return result;
}

std::string text(const Place& p) {
  return std::to_string(p.width) + " x " + std::to_string(p.height) + " at " + std::to_string(p.x) +
         ", " + std::to_string(p.y);
}

class Drawing : public ::testing::Test {
 protected:
  Drawing() {
    createWindowDevice(device_.window, device_.deviceContext, device_.renderContext);
    current_ = std::make_unique<ScopedCurrentContext>(device_);
    EXPECT_EQ(initialiseGL(), nullptr);
  }
  ~Drawing() override {
    current_.reset();
    destroyWindowDevice(device_.window, device_.deviceContext, device_.renderContext);
  }

  // Runs the body with a kernel that copies its input, the image node fed by input 0.
  template <class Body>
  void withCopy(const std::string& declarations, Body body) {
    room_.run([&](PF_InData*) {
      pbKernelInfo kernel;
      PBKParser("kernel Copy <> { input image4 src; output pixel4 dst; " + declarations +
                " void evaluatePixel() { dst = sampleNearest(src, outCoord()); } }")
          .parse(kernel);
      pbGraph program(kernel, kHostOrder);
      program.input(0)->index = 0;
      body(program);
    });
  }

  // Draws the input into the output and returns the frame's GL error.
  static unsigned draw(pbGraph& program, const ImageDesc& input, const ImageDesc& output,
                       std::uint32_t width = kWidth, std::uint32_t height = kHeight) {
    RenderContext frame;
    frame.output = input;
    frame.output.x = frame.output.y = 0;
    frame.output.width = width;
    frame.output.height = height;
    frame.inputs[0] = input;
    RenderContext result;
    result.output = output;
    program.evaluate(frame);
    program.outputNode()->readback(result);
    const unsigned error = program.glError();
    program.reset();
    return error;
  }

  WindowDevice device_;
  std::unique_ptr<ScopedCurrentContext> current_;
  testing::RoomHost room_;
};

TEST_F(Drawing, EveryBufferGetsWhatLiesUnderItAndNothingElseIsWritten) {
  constexpr Place kInputs[] = {{0, 0, 6, 5},  {-2, -1, 6, 5}, {-2, -1, 12, 9}, {3, 2, 6, 5},
                               {-9, 0, 6, 5}, {1, 1, 2, 2},   {0, 7, 6, 5}};
  constexpr Place kOutputs[] = {{0, 0, 6, 5},    {2, 1, 6, 5},  {0, 0, 9, 8}, {-3, -2, 12, 11},
                                {2, 1, 3, 2},    {-4, 0, 3, 5}, {0, 5, 6, 5}, {0, 0, 0, 5},
                                {-100, 3, 2, 2}, {0, 0, 6, 4},  {5, 4, 1, 1}};
  withCopy("", [&](pbGraph& program) {
    for (const int depth : {1, 2, 4}) {
      for (const int padding : {0, 8 * depth, depth, -2 * depth}) {
        for (const Place& from : kInputs) {
          Buffer input(depth, from, padding);
          input.fill();
          for (const Place& to : kOutputs) {
            for (const int outputIndex : {0, 1}) {
              SCOPED_TRACE(text(from) + " to " + text(to) + ", depth " + std::to_string(depth) +
                           ", padding " + std::to_string(padding) +
                           (outputIndex == 1 ? ", image" : ", kernel"));
              Buffer output(depth, to, padding);
              program.outputIndex = outputIndex;
              ASSERT_EQ(draw(program, input.desc, output.desc), 0u);
              ASSERT_TRUE(output.guardsAreWhole());
              // The whole of an image goes into a buffer of its size, wherever that is.
              const bool whole = outputIndex == 1 && to.width == kWidth && to.height == kHeight;
              for (int y = 0; y < to.height; ++y) {
                for (int x = 0; x < to.width; ++x) {
                  auto expected = whole ? input.shown(x, y) : input.shown(to.x + x, to.y + y);
                  if (outputIndex == 1) expected = asImage(expected);
                  const std::vector<unsigned char> got(output.at(x, y),
                                                       output.at(x, y) + expected.size());
                  ASSERT_EQ(got, expected) << x << ", " << y;
                }
              }
            }
          }
        }
      }
    }
  });
}

// Buffers of one and of three channels, which the rows' alignment would otherwise reach beyond.
TEST_F(Drawing, NarrowPixelsStayInsideTheirRows) {
  withCopy("", [&](pbGraph& program) {
    for (const int outputIndex : {0, 1}) {
      for (const int channels : {1, 2}) {
        program.outputIndex = outputIndex;
        Buffer input(1, {0, 0, 6, 5}, 0), output(1, {0, 0, 6, 5}, 0);
        std::vector<unsigned char> pixels(200, kGuard);
        const std::size_t rowBytes = channels == 1 ? 5 : 15;
        output.desc.channels = channels;
        output.desc.width = 5;
        output.desc.rowLength = 5;
        output.desc.rowBytes = 0;
        output.desc.pixels = pixels.data();
        ASSERT_EQ(draw(program, input.desc, output.desc), 0u);
        EXPECT_EQ(std::count(pixels.begin() + static_cast<std::ptrdiff_t>(5 * rowBytes),
                             pixels.end(), kGuard),
                  static_cast<std::ptrdiff_t>(200 - 5 * rowBytes));
      }
    }
  });
}

// A uniform of another type than its control, and whatever went wrong before, are not the frame's.
TEST_F(Drawing, OnlyTheFramesOwnErrorsCount) {
  Buffer input(1, {0, 0, 6, 5}, 0), output(1, {0, 0, 6, 5}, 0);
  input.fill();
  withCopy("parameter float3 p <aeUIControl: \"aePoint\";>;", [&](pbGraph& program) {
    for (int frame = 0; frame < 3; ++frame) {
      glEnable(0x9999);
      EXPECT_EQ(draw(program, input.desc, output.desc), 0u);
      EXPECT_EQ(std::memcmp(output.at(1, 1), input.at(1, 1), 4), 0);
      GLint limit = 0;
      glGetIntegerv(GL_MAX_TEXTURE_SIZE, &limit);
      const auto beyond = static_cast<std::uint32_t>(limit) + 1;
      EXPECT_EQ(draw(program, input.desc, output.desc, beyond, 1), unsigned{GL_INVALID_VALUE});
    }
  });
}

TEST_F(Drawing, AnIncompleteFramebufferIsAnErrorOfTheFrame) {
  const auto attach = __glewFramebufferTexture2DEXT;
  __glewFramebufferTexture2DEXT = [](GLenum, GLenum, GLenum, GLuint, GLint) {};
  Buffer input(1, {0, 0, 6, 5}, 0), output(1, {0, 0, 6, 5}, 0);
  withCopy("", [&](pbGraph& program) {
    EXPECT_EQ(draw(program, input.desc, output.desc),
              unsigned{GL_INVALID_FRAMEBUFFER_OPERATION_EXT});
  });
  __glewFramebufferTexture2DEXT = attach;
}

}  // namespace
}  // namespace vellumtide
