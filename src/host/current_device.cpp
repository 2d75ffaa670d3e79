#include "host/current_device.h"

#include "gl/gl_loader.h"

namespace vellumtide {
namespace {

constexpr std::chrono::milliseconds kPatience{1000};

const WindowDevice& madeDevice(GlobalData& globalData) {
  if (!globalData.device.renderContext) globalData.device.make();
  return globalData.device;
}

}  // namespace

CurrentDevice::CurrentDevice(GlobalData& globalData)
    : bracket_(madeDevice(globalData), kPatience), failure_(nullptr) {
  if (!bracket_.isCurrent()) {
    failure_ = globalData.device.renderContext ? "the OpenGL device could not be made current"
                                               : "there is no OpenGL device";
    return;
  }
  globalData.prepareDriver();
  if (!glAvailable()) failure_ = "OpenGL has no shaders or no framebuffer objects";
}

}  // namespace vellumtide
