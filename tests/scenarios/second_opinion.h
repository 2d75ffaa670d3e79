// A plain GL program that draws what a program file asks for, node after node, every image read
// through filtering samplers: the picture that the module's is held against.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "gl/gl_headers.h"
#include "gl/window_device.h"
#include "headless/world.h"
#include "tests/scenarios/plan.h"

namespace vellumtide::scenarios {

// Pixels as a frame hands them to an input image.
struct FrameImage {
  int index = -1;  // which image they feed; -1 for none
  float pixelAspect = 1;
  int x = 0, y = 0;  // where their first pixel goes; may be negative
  int width = 0, height = 0;
  int rowLength = 0;             // in pixels
  const void* pixels = nullptr;  // null: a layer control without a layer
};

struct FrameRequest {
  PF_PixelFormat format = 0;
  float downsampleX = 1, downsampleY = 1;
  float pixelAspect = 1;
  int width = 0, height = 0;  // of every image that is drawn
  std::vector<FrameImage> images;
  std::vector<ValueCells> values;  // of the plan's parameters
};

class SecondOpinion {
 public:
  SecondOpinion();  // throws std::runtime_error without a device
  ~SecondOpinion();
  SecondOpinion(const SecondOpinion&) = delete;
  SecondOpinion& operator=(const SecondOpinion&) = delete;

  // Whether every kernel on the way to the output compiles and links. The first that does not, but
  // should, is named in `wronged`.
  bool canDraw(const Plan& plan, std::string& wronged);
  // Draws and reads the output image back into the world, whose origin says which part; what lies
  // outside the image becomes transparent black.
  void draw(const Plan& plan, const FrameRequest& request, GLint filter, headless::World& output);
  int largestTexture() const { return largestTexture_; }

 private:
  struct Bracket;
  GLuint program(const PlanNode& node);  // 0 when it does not build
  void drawNode(const Plan& plan, int index, const FrameRequest& request,
                std::map<int, GLuint>& textures, GLint filter);
  void readBack(GLuint texture, bool isImage, headless::World& output, int width, int height);

  WindowDevice device_;
  int largestTexture_ = 0;
  std::map<std::string, GLuint> programs_;
};

}  // namespace vellumtide::scenarios
