// A GL context of the host's own, current while a module is called, so that a module that leaves
// another one current is found out.
#pragma once

#include <memory>
#include <string>

namespace vellumtide::headless {

class HostGlContext {
 public:
  // Never fails: without a driver `usable` is false and `status` says why.
  HostGlContext();
  ~HostGlContext();
  HostGlContext(const HostGlContext&) = delete;
  HostGlContext& operator=(const HostGlContext&) = delete;

  bool usable() const { return usable_; }
  // "EGL 1.5 on Mesa Project", or what could not be had.
  const std::string& status() const { return status_; }

  // Calls may nest; release makes current again what was before the makeCurrent it belongs to.
  void makeCurrent();
  void release();
  // "" when display, surfaces and context are still those of makeCurrent, else what differs.
  std::string difference() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
  bool usable_ = false;
  std::string status_;
};

}  // namespace vellumtide::headless
