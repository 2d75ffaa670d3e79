// Every command of a whole life of the module, each with what it needs before it, for tests that
// disturb one at every call it makes of the host.
#pragma once

#include <functional>

#include "tests/support/instances.h"

namespace vellumtide::instances {

// A command that the host refuses something ends with this.
inline constexpr PF_Err kRefused = PF_Err_OUT_OF_MEMORY;

// One host, and what its commands work on.
class Scene {
 public:
  Scene() : layer(add({1, 0.5, 0, 1})), under(add({0, 1, 0, 1})) {
    host().preferences().set("Settings_cs_VTD_Launcher", "rootFolder", session.folder.path("root"));
  }

  Host& host() { return session.host; }

  std::string nextName() const { return "k" + std::to_string(copies_) + ".pbk"; }
  // A program under a name that the module has not seen; "" stands for the kernel of all stages.
  std::string freshPath(const std::string& folder = "", const std::string& text = "");
  // A new instance, for the path unless that is empty.
  void make(const std::string& programPath) {
    path = programPath;
    layer.markers().clear();
    if (!path.empty()) layer.addMarker(path);
    effect = &host().newInstance(layer);
  }
  // The same for a program that the module holds already.
  void makeKnown() {
    if (known_.empty()) known_ = freshPath();
    make(known_);
  }
  void makeShown() {
    makeKnown();
    EXPECT_EQ(host().updateParamsUi(*effect), PF_Err_NONE);
  }
  void close() {
    if (effect) host().closeInstance(*effect);
    effect = nullptr;
  }

  // Whatever happened before: an instance is there or can be made, it runs the program or takes it
  // when the user chooses it, and the picture is right at every depth.
  void expectWorks();

  Session session{{.captureOutput = true, .checkGuardsEveryCall = false}};
  Layer& layer;
  Layer& under;
  Effect* effect = nullptr;
  std::string path;

 private:
  Layer& add(const ColorValue& color);

  int copies_ = 0;
  std::string known_;
};

struct Stage {
  const char* name;
  std::function<void(Scene&)> prepare;
  std::function<PF_Err(Scene&)> act;
  std::vector<PF_Err> results;  // that the command may end with
};

const std::vector<Stage>& wholeLife();

}  // namespace vellumtide::instances
