#include "services/aeo/layer.h"

#include "core/command_scope.h"
#include "core/utf.h"
#include "services/aeo/memory.h"
#include "services/aeo/stream.h"
#include "services/basic_suite.h"

namespace vellumtide::AEO {
namespace {

// The layer with an id in the composition of the effect's own layer.
AEGP_LayerH siblingLayer(PF_InData* in_data, AEGP_LayerIDVal id) {
  const AEGP_LayerH own = effectLayer(in_data);
  const ScopedSuite<AEGP_LayerSuite5> layers(basicSuiteOf(in_data));
  AEGP_CompH composition = nullptr;
  AEGP_LayerH layer = nullptr;
  if (!own || !layers || layers->AEGP_GetLayerParentComp(own, &composition)) return nullptr;
  if (!composition || layers->AEGP_GetLayerFromLayerID(composition, id, &layer)) return nullptr;
  return layer;
}

}  // namespace

AEGP_LayerH effectLayer(PF_InData* in_data) {
  const ScopedSuite<AEGP_PFInterfaceSuite1> effects(basicSuiteOf(in_data));
  AEGP_LayerH layer = nullptr;
  if (!effects || effects->AEGP_GetEffectLayer(in_data->effect_ref, &layer)) return nullptr;
  return layer;
}

AEGP_LayerH layerOfControl(PF_InData* in_data, PF_ParamIndex index) {
  if (!in_data) return nullptr;
  const Effect effect(in_data);
  const Stream stream(effect, index);
  const StreamValue value(stream, A_Time{in_data->current_time, in_data->time_scale});
  return value.error() ? nullptr : siblingLayer(in_data, value.value().layer_id);
}

double layerPixelAspect(PF_InData* in_data, AEGP_LayerH layer) {
  const ScopedSuite<AEGP_LayerSuite5> layers(basicSuiteOf(in_data));
  const ScopedSuite<AEGP_ItemSuite6> items(basicSuiteOf(in_data));
  AEGP_ItemH item = nullptr;
  A_Ratio ratio{1, 1};
  if (!layer || !layers || layers->AEGP_GetLayerSourceItem(layer, &item)) return 1.0;
  if (!item || !items || items->AEGP_GetItemPixelAspectRatio(item, &ratio)) return 1.0;
  if (ratio.num <= 0 || ratio.den == 0) return 1.0;
  return static_cast<double>(ratio.num) / ratio.den;
}

double layerControlPixelAspect(PF_InData* in_data, PF_ParamIndex index) {
  return layerPixelAspect(in_data, layerOfControl(in_data, index));
}

std::string firstMarkerComment(PF_InData* in_data) {
  SPBasicSuite* basic = basicSuiteOf(in_data);
  const AEGP_LayerH layer = effectLayer(in_data);
  if (!layer) return {};
  const Stream markers(basic, layer, AEGP_LayerStream_MARKER);
  if (keyframeCount(markers) < 1) return {};
  const StreamValue first(markers, AEGP_KeyframeIndex{0});
  const ScopedSuite<AEGP_MarkerSuite1> suite(basic);
  Memory comment(basic);
  if (first.error() || !first.value().markerP || !suite || comment.error()) return {};
  if (suite->AEGP_GetMarkerString(currentPluginId, first.value().markerP, AEGP_MarkerString_COMMENT,
                                  comment.receive())) {
    return {};
  }
  return toUtf8(comment.utf16Text().value_or(std::u16string()));
}

}  // namespace vellumtide::AEO
