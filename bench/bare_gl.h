// The smallest GL programs that do a frame's work, to measure the module against: persistent
// textures, framebuffers and programs, one upload, one draw a pass, one read-back.
#pragma once

#include <string>
#include <vector>

#include "gl/gl_headers.h"
#include "gl/window_device.h"
#include "headless/world.h"

namespace vellumtide::bench {

// A GL context of the benchmark's own, current from its construction on.
class BareContext {
 public:
  // Throws std::runtime_error without a usable device.
  BareContext();
  ~BareContext();
  BareContext(const BareContext&) = delete;
  BareContext& operator=(const BareContext&) = delete;

 private:
  WindowDevice device_;
};

struct ShaderTexts {
  std::string vertex;
  std::string fragment;
};

struct FloatUniform {
  std::string name;
  float value;
};

// One draw: sampler names with the images they read, 0 for the input, n for the result of pass n.
struct Pass {
  ShaderTexts texts;
  std::vector<std::pair<std::string, int>> samplers;
  std::vector<FloatUniform> parameters;
};

// Compiles and links; throws std::runtime_error with the driver's log.
GLuint buildProgram(const ShaderTexts& texts);

// Whether the textures keep their storage from frame to frame, or are one texel between frames.
enum class Storage { Kept, GivenBack };

class BareFrame {
 public:
  BareFrame(int width, int height, PF_PixelFormat format, const std::vector<Pass>& passes,
            Storage storage = Storage::Kept);
  ~BareFrame();
  BareFrame(const BareFrame&) = delete;
  BareFrame& operator=(const BareFrame&) = delete;

  // Uploads, draws all passes and reads the last one's result; seconds that took.
  double draw(const headless::World& input, headless::World& output);

 private:
  struct Target {
    GLuint framebuffer = 0;
    GLuint program = 0;
    std::vector<int> sources;
  };

  GLuint makeTexture();
  void specify(int width, int height);  // of the bound texture
  void specifyAll(int width, int height);
  void setUniforms(const Pass& pass, GLuint program);

  int width_, height_;
  Storage storage_;
  GLenum internalFormat_, type_;
  int bytesPerPixel_;
  std::vector<GLuint> textures_;  // the input, then the results
  std::vector<Target> targets_;
};

}  // namespace vellumtide::bench
