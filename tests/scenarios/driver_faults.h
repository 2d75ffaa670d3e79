// A driver that refuses to make the module's device current, as it does while another thread holds
// the context: eglMakeCurrent goes through here in the whole process.
#pragma once

namespace vellumtide::scenarios {

// Contexts made while one of these lives are never refused.
class OwnContexts {
 public:
  OwnContexts();
  ~OwnContexts();
  OwnContexts(const OwnContexts&) = delete;
  OwnContexts& operator=(const OwnContexts&) = delete;
};

// Refuses that many attempts from now on; 0 refuses no more.
void refuseDevice(int times);
// Attempts refused since the last refuseDevice.
int deviceRefusals();

}  // namespace vellumtide::scenarios
