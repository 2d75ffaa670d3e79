// The ECMAScript text that gives scripts the host's objects. Internal to this folder.
#pragma once

namespace vellumtide::headless {

// A function expression of (global object, hostCall).
extern const char* const kScriptStandIns;

}  // namespace vellumtide::headless
