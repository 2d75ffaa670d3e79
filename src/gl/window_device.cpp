#include "gl/window_device.h"

#include <algorithm>
#include <string_view>
#include <thread>

#include "gl/window_device_names.h"

namespace vellumtide {
namespace {

DeviceName suffix{};
DeviceName className{};

DeviceName cutName(std::string_view start, std::string_view end) {
  DeviceName name{};
  const std::size_t room = name.size() - 1;
  start = start.substr(0, room);
  end = end.substr(0, room - start.size());
  std::copy(end.begin(), end.end(), std::copy(start.begin(), start.end(), name.begin()));
  return name;
}

}  // namespace

void setDeviceNameSuffix(const char* text) {
  suffix = cutName(text ? text : "", "");
}

const char* deviceNameSuffix() {
  return suffix.data();
}

const char* deviceClassName() {
  return className.data();
}

const char* composeDeviceClassName() {
  className = cutName("AEGL_WindowDevice_", suffix.data());
  return className.data();
}

DeviceName deviceWindowTitle() {
  return cutName("OpenGL_AE_", suffix.data());
}

ScopedCurrentContext::ScopedCurrentContext(const WindowDevice& device,
                                           std::chrono::milliseconds patience)
    : saved_(saveCurrentContext()), current_(makeDeviceCurrent(device)) {
  using Clock = std::chrono::steady_clock;
  if (current_ || !device.renderContext) return;
  constexpr std::chrono::milliseconds kPause{10};
  const auto end = Clock::now() + patience;
  while (!current_ && Clock::now() < end) {
    std::this_thread::sleep_for(kPause);
    current_ = makeDeviceCurrent(device);
  }
}

ScopedCurrentContext::~ScopedCurrentContext() {
  restoreCurrentContext(saved_);
}

}  // namespace vellumtide
