// Suites of the scene: an effect's layer, layers, items, markers.
#include "headless/call_frame.h"
#include "headless/suites/traps.h"
#include "headless/tables.h"
#include "headless/text.h"

namespace vellumtide::headless {
namespace {

A_Err getEffectLayer(PF_ProgPtr reference, AEGP_LayerH* layer) {
  return serve(CallKind::kSuiteCall, "AEGP_GetEffectLayer", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetEffectLayer";
    Effect* effect = frame.effectOf(reference, kName);
    if (!effect || !layer) return badArgument(frame, kName, "no instance or no place");
    *layer = reinterpret_cast<AEGP_LayerH>(&effect->layer());
    return PF_Err{PF_Err_NONE};
  });
}

A_Err getNewEffectForEffect(AEGP_PluginID id, PF_ProgPtr reference, AEGP_EffectRefH* made) {
  return serve(CallKind::kSuiteCall, "AEGP_GetNewEffectForEffect", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetNewEffectForEffect";
    checkPluginId(frame, id, kName);
    Effect* effect = frame.effectOf(reference, kName);
    if (!effect || !made) return badArgument(frame, kName, "no instance or no place");
    *made = frame.state().newReference<AEGP_EffectRefH>();
    frame.state().effectRefs[*made] = {effect, frame.books().command()};
    return PF_Err{PF_Err_NONE};
  });
}

A_Err convertEffectToCompTime(PF_ProgPtr reference, A_long time, A_u_long scale, A_Time* compTime) {
  return serve(CallKind::kSuiteCall, "AEGP_ConvertEffectToCompTime", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_ConvertEffectToCompTime";
    if (!frame.effectOf(reference, kName) || !compTime || scale == 0) {
      return badArgument(frame, kName, "no instance, no place or a time scale of 0");
    }
    *compTime = {time, scale};
    return PF_Err{PF_Err_NONE};
  });
}

A_Err disposeEffect(AEGP_EffectRefH reference) {
  return serveGiveBack(CallKind::kSuiteCall, "AEGP_DisposeEffect", [&](CallFrame& frame) {
    if (frame.state().effectRefs.erase(reference) != 0) return PF_Err{PF_Err_NONE};
    return badArgument(frame, "AEGP_DisposeEffect", "an effect reference that is not out");
  });
}

A_Err getLayerSourceItem(AEGP_LayerH reference, AEGP_ItemH* item) {
  return serve(CallKind::kSuiteCall, "AEGP_GetLayerSourceItem", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetLayerSourceItem";
    Layer* layer = frame.layerOf(reference, kName);
    if (!layer || !item) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    *item = layer->item() ? reinterpret_cast<AEGP_ItemH>(&*layer->item()) : nullptr;
    return PF_Err{PF_Err_NONE};
  });
}

A_Err getLayerParentComp(AEGP_LayerH reference, AEGP_CompH* comp) {
  return serve(CallKind::kSuiteCall, "AEGP_GetLayerParentComp", [&](CallFrame& frame) {
    Layer* layer = frame.layerOf(reference, "AEGP_GetLayerParentComp");
    if (!layer || !comp) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    *comp = reinterpret_cast<AEGP_CompH>(&layer->composition());
    return PF_Err{PF_Err_NONE};
  });
}

A_Err getLayerFromLayerId(AEGP_CompH reference, AEGP_LayerIDVal id, AEGP_LayerH* made) {
  return serve(CallKind::kSuiteCall, "AEGP_GetLayerFromLayerID", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetLayerFromLayerID";
    if (!made) return badArgument(frame, kName, "no place for the layer");
    for (Composition& comp : frame.host().compositions()) {
      if (reinterpret_cast<AEGP_CompH>(&comp) != reference) continue;
      *made = reinterpret_cast<AEGP_LayerH>(comp.findLayer(id));
      return PF_Err{*made ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM};
    }
    return badArgument(frame, kName, "an unknown composition");
  });
}

A_Err getItemPixelAspectRatio(AEGP_ItemH reference, A_Ratio* ratio) {
  return serve(CallKind::kSuiteCall, "AEGP_GetItemPixelAspectRatio", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetItemPixelAspectRatio";
    // A layer without a source has no item; asking about it is an error, not a fault.
    if (!reference) return PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    for (Composition& comp : frame.host().compositions()) {
      for (Layer& layer : comp.layers()) {
        if (!layer.item() || reinterpret_cast<AEGP_ItemH>(&*layer.item()) != reference) continue;
        if (!ratio) return badArgument(frame, kName, "no place for the ratio");
        *ratio = layer.item()->pixelAspect;
        return PF_Err{PF_Err_NONE};
      }
    }
    return badArgument(frame, kName, "an unknown item");
  });
}

A_Err disposeMarker(AEGP_MarkerValP) {
  return serveGiveBack(CallKind::kSuiteCall, "AEGP_DisposeMarker", [](CallFrame& frame) {
    return badArgument(frame, "AEGP_DisposeMarker", "a marker that belongs to a stream value");
  });
}

A_Err getMarkerString(AEGP_PluginID id, AEGP_ConstMarkerValP reference, AEGP_MarkerStringType type,
                      AEGP_MemHandle* text) {
  return serve(CallKind::kSuiteCall, "AEGP_GetMarkerString", [&](CallFrame& frame) {
    constexpr const char* kName = "AEGP_GetMarkerString";
    checkPluginId(frame, id, kName);
    const auto marker = frame.state().markers.find(reference);
    if (marker == frame.state().markers.end() || !text) {
      return badArgument(frame, kName, "an unknown marker or no place for the text");
    }
    std::u16string wide = type == AEGP_MarkerString_COMMENT ? marker->second.comment : u"";
    const size_t size = (wide.size() + 1) * sizeof(char16_t);
    *text = frame.host().handles().allocate(BlockFamily::kMemHandle, size, "marker text");
    if (!*text) return PF_Err{PF_Err_OUT_OF_MEMORY};
    std::memcpy(**text, wide.c_str(), size);
    return PF_Err{PF_Err_NONE};
  });
}

}  // namespace

const AEGP_PFInterfaceSuite1& pfInterfaceSuite() {
  static const AEGP_PFInterfaceSuite1 table = [] {
    auto made = trapTable<AEGP_PFInterfaceSuite1>();
    made.AEGP_GetEffectLayer = getEffectLayer;
    made.AEGP_GetNewEffectForEffect = getNewEffectForEffect;
    made.AEGP_ConvertEffectToCompTime = convertEffectToCompTime;
    return made;
  }();
  return table;
}

const AEGP_EffectSuite3& effectSuite() {
  static const AEGP_EffectSuite3 table = [] {
    auto made = trapTable<AEGP_EffectSuite3>();
    made.AEGP_DisposeEffect = disposeEffect;
    return made;
  }();
  return table;
}

const AEGP_LayerSuite5& layerSuite() {
  static const AEGP_LayerSuite5 table = [] {
    auto made = trapTable<AEGP_LayerSuite5>();
    made.AEGP_GetLayerSourceItem = getLayerSourceItem;
    made.AEGP_GetLayerParentComp = getLayerParentComp;
    made.AEGP_GetLayerFromLayerID = getLayerFromLayerId;
    return made;
  }();
  return table;
}

const AEGP_ItemSuite6& itemSuite() {
  static const AEGP_ItemSuite6 table = [] {
    auto made = trapTable<AEGP_ItemSuite6>();
    made.AEGP_GetItemPixelAspectRatio = getItemPixelAspectRatio;
    return made;
  }();
  return table;
}

const AEGP_MarkerSuite1& markerSuite() {
  static const AEGP_MarkerSuite1 table = [] {
    auto made = trapTable<AEGP_MarkerSuite1>();
    made.AEGP_DisposeMarker = disposeMarker;
    made.AEGP_GetMarkerString = getMarkerString;
    return made;
  }();
  return table;
}

}  // namespace vellumtide::headless
