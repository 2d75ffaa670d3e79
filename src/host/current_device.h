#pragma once

#include "gl/window_device.h"
#include "host/global_data.h"

namespace vellumtide {

// Makes the module's device current for a scope, ready to build and draw. What start-up could not
// do is done now: a device is made where there is none, and its entry points are loaded.
class CurrentDevice {
 public:
  explicit CurrentDevice(GlobalData& globalData);

  // Why nothing can be built or drawn in this scope, null when everything can.
  const char* failure() const { return failure_; }

 private:
  ScopedCurrentContext bracket_;
  const char* failure_;
};

}  // namespace vellumtide
