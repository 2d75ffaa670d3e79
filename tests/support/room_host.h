// Runs the code of one room inside a command of the headless host, which keeps books of all it does
// and can refuse any call.
#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "core/command_scope.h"
#include "headless/host.h"

namespace vellumtide::testing {

class RoomHost {
 public:
  using Body = std::function<void(PF_InData*)>;

  // One effect with controls 1 to 4, a layer, a check box, a point and a colour.
  RoomHost() : layer(addLayer("layer")) {
    host.globalSetup();
    effect = &host.newInstance(layer);
  }

  headless::Layer& addLayer(const char* name) {
    return comp.addLayer(name, headless::World(4, 4, PF_PixelFormat_ARGB32));
  }

  // Runs the body in a command, inside a scope unless it opens its own, and returns what it threw.
  // Whatever it did not give back is a test failure.
  PF_Err run(const Body& body, bool inScope = true) {
    running = {body, inScope};
    const headless::Holdings before = host.holdings();
    const PF_Err error = host.call(kRunCommand, effect);
    EXPECT_EQ(host.holdings(), before) << host.holdings().text();
    EXPECT_EQ(host.books().faultText(), "") << "last refused: " << host.gate().lastRefused();
    return error;
  }

  // Runs the body with each of its calls to the host refused in turn and returns how many there
  // were; in the last run none is refused.
  int refuseEach(const Body& body) {
    for (int n = 1;; ++n) {
      const auto refusals = host.gate().refusals();
      host.gate().refuseNth(static_cast<uint64_t>(n));
      const PF_Err error = run(body);
      EXPECT_TRUE(error == PF_Err_NONE || error == PF_Err_OUT_OF_MEMORY) << error;
      if (host.gate().refusals() == refusals) return n - 1;
    }
  }

  headless::Host host{headless::Module::inProcess(serve),
                      {.checkOutFlags = false, .ownGlContext = false}};
  headless::Composition& comp = host.addComposition("comp");
  headless::Layer& layer;
  headless::Effect* effect;

 private:
  static constexpr PF_Cmd kRunCommand = 99;
  static inline std::pair<Body, bool> running;
  static inline AEGP_PluginID pluginId = 0;

  static PF_Err serve(PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamDef**, PF_LayerDef*,
                      void*) try {
    if (command == PF_Cmd_GLOBAL_SETUP) {
      const ScopedSuite<AEGP_UtilitySuite5> utility(in->pica_basicP);
      utility->AEGP_RegisterWithAEGP(nullptr, "room", &pluginId);
    } else if (command == PF_Cmd_PARAMS_SETUP) {
      out->num_params = 5;
      for (const auto type : {PF_Param_LAYER, PF_Param_CHECKBOX, PF_Param_POINT, PF_Param_COLOR}) {
        PF_ParamDef definition{};
        definition.uu.id = definition.param_type = type;
        if (type == PF_Param_CHECKBOX) definition.u.bd.u.nameptr = "";
        in->inter.add_param(in->effect_ref, -1, &definition);
      }
    } else if (command == kRunCommand) {
      const CommandScope scope(command, running.second ? in : nullptr, pluginId);
      running.first(in);
    }
    return PF_Err_NONE;
  } catch (PF_Err& error) {
    return error;
  }
};

}  // namespace vellumtide::testing
