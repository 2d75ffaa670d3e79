#include "services/aeo/layer_aspect.h"

#include "core/suite_handler.h"
#include "services/aeo/effect_layer.h"
#include "services/aeo/stream.h"
#include "services/basic_suite.h"

namespace vellumtide {
namespace {

// The layer with an id in the composition of the effect's own layer; 0 stands for none.
AEGP_LayerH siblingLayer(PF_InData* in_data, AEGP_LayerIDVal id) {
  if (id == 0) return nullptr;
  const AEGP_LayerH own = AEO::effectLayer(in_data);
  const ScopedSuite<AEGP_LayerSuite5> layers(basicSuiteOf(in_data));
  AEGP_CompH composition = nullptr;
  AEGP_LayerH layer = nullptr;
  if (!own || !layers || layers->AEGP_GetLayerParentComp(own, &composition)) return nullptr;
  if (!composition || layers->AEGP_GetLayerFromLayerID(composition, id, &layer)) return nullptr;
  return layer;
}

AEGP_LayerH layerOfControl(PF_InData* in_data, PF_ParamIndex index) {
  const AEO::Effect effect(in_data);
  const AEO::Stream stream(effect, index);
  const AEO::StreamValue value(stream, A_Time{in_data->current_time, in_data->time_scale});
  return value.error() ? nullptr : siblingLayer(in_data, value.value().layer_id);
}

}  // namespace

float layerPixelAspect(PF_InData* in_data, AEGP_LayerH layer) {
  const ScopedSuite<AEGP_LayerSuite5> layers(basicSuiteOf(in_data));
  const ScopedSuite<AEGP_ItemSuite6> items(basicSuiteOf(in_data));
  AEGP_ItemH item = nullptr;
  A_Ratio ratio{1, 1};
  if (!layer || !layers || layers->AEGP_GetLayerSourceItem(layer, &item)) return 1.0f;
  if (!item || !items || items->AEGP_GetItemPixelAspectRatio(item, &ratio)) return 1.0f;
  if (ratio.num <= 0 || ratio.den == 0) return 1.0f;
  return static_cast<float>(static_cast<double>(ratio.num) / ratio.den);
}

float layerParameterAspect(PF_InData* in_data, PF_ParamIndex index) {
  return in_data ? layerPixelAspect(in_data, layerOfControl(in_data, index)) : 1.0f;
}

}  // namespace vellumtide
