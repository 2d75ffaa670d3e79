// A host with the subject module set up and one instance on a small layer.
#pragma once

#include <gtest/gtest.h>

#include "headless/host.h"
#include "subject_misdeeds.h"

namespace vellumtide::headless {

inline std::shared_ptr<Module> loadSubject() {
  const std::string beside = defaultModulePath();
  return Module::load(beside.substr(0, beside.find_last_of("/\\") + 1) + SUBJECT_FILE);
}

// Bytes that differ from pixel to pixel.
inline World testPicture(int width, int height, PF_PixelFormat format, WorldLayout layout = {}) {
  World world(width, height, format, layout);
  for (int y = 0; y < height; ++y) {
    for (int i = 0; i < width * bytesPerPixel(format); ++i) {
      world.row(y)[i] = static_cast<uint8_t>(i * 7 + y * 31);
    }
  }
  return world;
}

struct SubjectHost {
  Host host;
  Layer& layer;
  Effect* effect = nullptr;

  explicit SubjectHost(const std::string& marker = "", HostOptions options = {})
      : host(loadSubject(), std::move(options)),
        layer(host.addComposition("comp").addLayer("layer",
                                                   testPicture(17, 13, PF_PixelFormat_ARGB32))) {
    layer.addMarker(marker);
    host.globalSetup();
    effect = &host.newInstance(layer);
  }
};

}  // namespace vellumtide::headless
