// What the host's callbacks keep between calls: references given out, worlds given out, the render
// under way. Internal to this folder.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "headless/effect.h"

namespace vellumtide::headless {

struct RenderOptions;

// What a stream reference stands for.
struct StreamTarget {
  enum class Kind { kControl, kGroup, kMarkers };
  Kind kind = Kind::kControl;
  Effect* effect = nullptr;  // null once the instance is gone
  PF_ParamIndex index = 0;   // of a control
  Layer* layer = nullptr;    // of markers
  int values = 0;            // stream values given out and not given back
  std::string madeIn;        // the command it was made in
};

// A layer checked out in pre-render.
struct LayerCheckout {
  PF_EffectWorld view{};   // the part of the layer's world that was asked for
  World* world = nullptr;  // null when no layer is chosen
  uint64_t checksum = 0;
  bool pixelsOut = false;
};

// One frame: from pre-render to the end of render.
struct RenderPass {
  const RenderOptions* options = nullptr;
  std::map<A_long, LayerCheckout> layers;  // by checkout id
  World* output = nullptr;
  int outputCheckouts = 0;
};

struct HostState {
  // References are numbers that are never used twice, so a stale one is always known.
  template <typename Reference>
  Reference newReference() {
    nextReference += 16;
    return reinterpret_cast<Reference>(nextReference);
  }
  uintptr_t nextReference = 0x1000;

  std::map<AEGP_StreamRefH, StreamTarget> streams;
  std::map<AEGP_StreamRefH, int> orphanedValues;   // of streams given back before their values
  std::map<AEGP_ConstMarkerValP, Marker> markers;  // of stream values given out
  struct EffectReference {
    Effect* effect;  // null once the instance is gone
    std::string madeIn;
  };
  std::map<AEGP_EffectRefH, EffectReference> effectRefs;

  // Pixel formats of the worlds a module holds, by their platform_ref.
  std::map<const void*, PF_PixelFormat> worldFormats;
  std::map<const void*, std::unique_ptr<World>> newWorlds;

  RenderPass* pass = nullptr;
  std::vector<PF_ParamDef> declared;   // parameter 0 is the layer the effect is on
  std::deque<std::string> paramTexts;  // texts of declared pop-ups and check boxes
  std::string optionsButton;
  std::set<AEGP_PluginID> pluginIds;
  A_long nextCheckout = 1;

  // Gives a world to the module: its record, known by its format.
  PF_EffectWorld* lend(World& world);
  // Cuts the references to an instance or layer that goes away.
  void forget(const Effect& effect);
};

}  // namespace vellumtide::headless
