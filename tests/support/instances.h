// What the tests of instances share: the built module in a host, programs, saved data.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "headless/host.h"
#include "tests/support/scratch_folder.h"

namespace vellumtide::instances {

using namespace headless;
using testing::ScratchFolder;

inline std::string kernelText(const std::string& declarations, const std::string& statements) {
  return "<languageVersion : 1.0;>\nkernel Sample <namespace : \"n\"; vendor : \"v\"; version : 1;>"
         "\n{\noutput pixel4 dst;\n" +
         declarations + "\nvoid evaluatePixel()\n{\n" + statements + "\n}\n}\n";
}

// Its destructor sets the module down and fails the test for every fault that the host has seen.
struct Session {
  explicit Session(HostOptions options = {.captureOutput = true})
      : host(Module::load(defaultModulePath()), std::move(options)),
        comp(host.addComposition("comp")) {
    EXPECT_EQ(host.globalSetup(), PF_Err_NONE);
  }
  ~Session() {
    host.finish();
    const std::string faults = host.books().faultText();
    const bool oneLeak = host.books().faultCount() == 1 && host.books().hasFault("leaked a handle");
    EXPECT_TRUE(leaks ? oneLeak : faults.empty()) << faults;
  }

  // Writes a program file and gives its path.
  std::string file(const std::string& name, const std::string& text) const {
    folder.put(name, text);
    return folder.path(name);
  }
  // A layer with an instance of the effect that runs the program, its panel updated.
  Effect& effect(World pixels, const std::string& path) {
    Layer& layer = comp.addLayer("layer", std::move(pixels));
    layer.addMarker(path);
    Effect& made = host.newInstance(layer);
    EXPECT_EQ(host.updateParamsUi(made), PF_Err_NONE);
    return made;
  }

  ScratchFolder folder;
  Host host;
  Composition& comp;
  bool leaks = false;  // one handle, as expected
};

// Saved data in the layout that projects hold.
inline std::vector<uint8_t> savedData(std::string_view path, bool fresh = false) {
  std::vector<uint8_t> bytes(path.size() + 9);
  bytes[0] = 1;
  bytes[4] = fresh;
  std::copy(path.begin(), path.end(), bytes.begin() + 8);
  return bytes;
}

// A picture in which each pixel is another.
inline World smallWorld(PF_PixelFormat format = PF_PixelFormat_ARGB32) {
  World world(4, 3, format);
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 4; ++x)
      world.setPixel(x, y, x / 4.0, y / 3.0, 0.25, 1);
  }
  return world;
}

}  // namespace vellumtide::instances
